#include "widgets/windows/loading/LoadReportTable.h"

#include "nodes/serial/LoadReport.h"
#include "utils/convert/PlainTip.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QStyle>

namespace Widgets {

namespace {

struct SeverityLook
{
    const char *text;
    QStyle::StandardPixmap icon;
};

SeverityLook lookOf(Nodes::LoadMessage::SeverityType severity)
{
    static const SeverityLook looks[] = {
        {QT_TRANSLATE_NOOP("Widgets::LoadReportTable", "Замечание"),
         QStyle::SP_MessageBoxInformation},
        {QT_TRANSLATE_NOOP("Widgets::LoadReportTable", "Ошибка"), QStyle::SP_MessageBoxWarning},
        {QT_TRANSLATE_NOOP("Widgets::LoadReportTable", "Отказ"), QStyle::SP_MessageBoxCritical},
    };
    return looks[severity];
}

QString placeOf(const Nodes::LoadMessage &message)
{
    const QString file = QFileInfo(QString::fromStdString(message.file)).fileName();
    return message.line > 0 ? QStringLiteral("%1:%2").arg(file).arg(message.line) : file;
}

} // namespace

LoadReportTable::LoadReportTable(QWidget *parent) : QTableWidget(0, ColumnCount, parent)
{
    setHorizontalHeaderLabels(
        {tr("Важность"), tr("Что не так и что делать"), tr("Файл и строка"), tr("Элемент")});
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setWordWrap(true);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(SeverityColumn, QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(PlaceColumn, QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(TextColumn, QHeaderView::Stretch);
    horizontalHeader()->setSectionResizeMode(ElementColumn, QHeaderView::Stretch);
}

void LoadReportTable::setReport(const Nodes::LoadReport &report)
{
    setRowCount(0);
    for (const auto severity :
         {Nodes::LoadMessage::Fatal, Nodes::LoadMessage::Error, Nodes::LoadMessage::Warning}) {
        for (const Nodes::LoadMessage &message : report.GetMessages()) {
            if (message.severity == severity && rowCount() < MaximumRows)
                addMessage(message);
        }
    }
}

void LoadReportTable::addMessage(const Nodes::LoadMessage &message)
{
    const SeverityLook look = lookOf(message.severity);
    const QString texts[ColumnCount] = {tr(look.text), QString::fromStdString(message.text),
                                        placeOf(message), QString::fromStdString(message.path)};
    const int row = rowCount();
    insertRow(row);
    for (int column = 0; column < ColumnCount; ++column) {
        auto *item = new QTableWidgetItem(texts[column]);
        item->setTextAlignment(Qt::AlignLeft | Qt::AlignTop);
        item->setToolTip(Utils::PlainTip(texts[column]));
        setItem(row, column, item);
    }
    item(row, SeverityColumn)->setIcon(style()->standardIcon(look.icon));
}

// Row heights follow the widths that the wrapped texts got.
void LoadReportTable::resizeEvent(QResizeEvent *event)
{
    QTableWidget::resizeEvent(event);
    resizeRowsToContents();
}

} // namespace Widgets
