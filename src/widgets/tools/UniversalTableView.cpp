#include "widgets/tools/UniversalTableView.h"

#include "widgets/tools/ArchiverDBMgrDialog.h"
#include "widgets/tools/TimeColumnDelegate.h"

#include "nodes/archive/DatabaseFilesOf.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

#include <algorithm>
#include <memory>

namespace Widgets {

namespace {

constexpr int timeColumn = 3;

QList<FileInfoData> filesOf(const Nodes::NodeLink &link)
{
    QList<FileInfoData> found;
    const Nodes::DatabaseFiles files = Nodes::DatabaseFilesOf(link);
    const QDir directory(QString::fromStdString(files.GetDirectory()));
    for (const std::string &path : files.ListPaths()) {
        const QString name = QString::fromStdString(path);
        const QFileInfo info(directory.filePath(name));
        if (info.exists())
            found.append({name, quint64(info.size()), info.birthTime(), info.lastModified()});
    }
    return found;
}

} // namespace

UniversalTableView::UniversalTableView(QWidget *parent) : QTableView(parent)
{
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setWordWrap(false);
    verticalHeader()->hide();
}

void UniversalTableView::makeModel(const Nodes::NodeLink &link, UniversalTableType type,
                                   QObject *parent)
{
    m_link = link;
    setTable(new UniversalTableSortModel(filesOf(link), type, parent), type);
}

void UniversalTableView::makeModel(const Nodes::NodesArray &nodes, UniversalTableType type,
                                   QObject *parent)
{
    setTable(new UniversalTableSortModel(nodes, type, parent), type);
}

void UniversalTableView::setTable(UniversalTableSortModel *model, UniversalTableType type)
{
    const int column = horizontalHeader()->sortIndicatorSection();
    const Qt::SortOrder order = horizontalHeader()->sortIndicatorOrder();
    const bool wasSorted = m_sortModel && m_sortModel->sortColumn() >= 0;
    const std::unique_ptr<QItemSelectionModel> former(selectionModel());
    const std::unique_ptr<UniversalTableSortModel> formerTable(m_sortModel);
    m_type = type;
    m_sortModel = model;
    setModel(model);
    setSortingEnabled(true);
    sortByColumn(wasSorted ? column : 1, wasSorted ? order : Qt::AscendingOrder);
    horizontalHeader()->setSectionsMovable(true);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setStretchLastSection(true);
    if (model->columnCount() > 0)
        horizontalHeader()->setSectionResizeMode(0, QHeaderView::Fixed);
    setSelectionMode(type == UniversalTableNodes ? SingleSelection : ExtendedSelection);
    setItemDelegateForColumn(timeColumn,
                             type == UniversalTableFiles ? new TimeColumnDelegate(model) : nullptr);
    emit listed();
}

void UniversalTableView::refresh()
{
    makeModel(m_link, UniversalTableFiles, m_sortModel ? m_sortModel->QObject::parent() : this);
}

QList<UniversalTableItem *> UniversalTableView::selectedItems() const
{
    QList<UniversalTableItem *> items;
    if (!m_sortModel || !selectionModel())
        return items;
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    for (const QModelIndex &row : rows)
        items.append(m_sortModel->itemAt(row));
    return items;
}

QMenu *UniversalTableView::makeMenu()
{
    if (m_type != UniversalTableFiles)
        return nullptr;
    auto *menu = new QMenu(this);
    menu->addAction(QStringLiteral("Обновить список файлов"), this, &UniversalTableView::refresh);
    const QList<UniversalTableItem *> chosen = selectedItems();
    if (!m_dialog)
        return menu;
    if (m_dialog->hasCopyTarget())
        menu->addAction(QStringLiteral("Копировать в \"%1\"").arg(m_dialog->copyTarget()), m_dialog,
                        &ArchiverDBMgrDialog::copyFiles);
    const QString deletion =
        chosen.size() == 1 ? QStringLiteral("Удалить файл ") + chosen.first()->getInfoFile().name
                           : QStringLiteral("Удалить выбранные файлы");
    if (!chosen.isEmpty())
        menu->addAction(deletion, m_dialog, &ArchiverDBMgrDialog::deleteFiles);
    return menu;
}

void UniversalTableView::contextMenuEvent(QContextMenuEvent *event)
{
    if (QMenu *menu = makeMenu()) {
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->popup(event->globalPos());
    }
}

void UniversalTableView::keyPressEvent(QKeyEvent *event)
{
    const int step = event->key() == Qt::Key_Up ? -1 : event->key() == Qt::Key_Down ? 1 : 0;
    if (m_type != UniversalTableNodes || step == 0 || !m_sortModel)
        return QTableView::keyPressEvent(event);
    const QModelIndex next =
        m_sortModel->index(currentIndex().row() + step, std::max(0, currentIndex().column()));
    if (!next.isValid())
        return;
    setCurrentIndex(next);
    tell(next);
}

void UniversalTableView::mouseReleaseEvent(QMouseEvent *event)
{
    QTableView::mouseReleaseEvent(event);
    const QModelIndex row = indexAt(event->pos());
    if (m_type == UniversalTableNodes && event->button() == Qt::LeftButton && row.isValid())
        tell(row);
}

void UniversalTableView::tell(const QModelIndex &row)
{
    if (const UniversalTableItem *item = m_sortModel->itemAt(row))
        emit showArchivatorFiles(item->getNodeLink());
}

} // namespace Widgets
