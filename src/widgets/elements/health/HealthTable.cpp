#include "widgets/elements/health/HealthTable.h"

#include "widgets/dialogs/DialogLook.h"

#include <QHeaderView>
#include <QTableView>

namespace Widgets {

void PrepareHealthTable(QTableView &table, int rowHeight, int stretched)
{
    MakeLegible(table);
    MakeLegible(*table.horizontalHeader());
    table.setStyleSheet(
        QStringLiteral("QTableView { background: #fafbfc; alternate-background-color: #eef0f2; }"
                       "QTableView::item { border: 0px; padding: 0 8px; }"));
    table.horizontalHeader()->setStyleSheet(
        QStringLiteral("QHeaderView { font-size: 11pt; }"
                       "QHeaderView::section { background: #e3e7ea; color: #20262c; border: none;"
                       " border-bottom: 1px solid #8a949b; padding: 4px 8px; }"));
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
    table.setSelectionBehavior(QAbstractItemView::SelectRows);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setShowGrid(false);
    table.setAlternatingRowColors(true);
    table.setWordWrap(false);
    table.setTabKeyNavigation(false);
    table.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table.verticalHeader()->hide();
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setDefaultSectionSize(rowHeight);
    QHeaderView *header = table.horizontalHeader();
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(stretched, QHeaderView::Stretch);
}

} // namespace Widgets
