#include "widgets/tools/UniversalTableSortModel.h"

namespace Widgets {

UniversalTableSortModel::UniversalTableSortModel(const QList<FileInfoData> &files,
                                                 UniversalTableType type, QObject *parent)
    : QSortFilterProxyModel(parent)
{
    begin(new UniversalTableModel(files, type, this));
}

UniversalTableSortModel::UniversalTableSortModel(const Nodes::NodesArray &nodes,
                                                 UniversalTableType type, QObject *parent)
    : QSortFilterProxyModel(parent)
{
    begin(new UniversalTableModel(nodes, type, this));
}

void UniversalTableSortModel::begin(UniversalTableModel *table)
{
    m_table = table;
    setSortRole(UniversalTableModel::SortRole);
    setSortCaseSensitivity(Qt::CaseInsensitive);
    setSortLocaleAware(true);
    setSourceModel(table);
}

UniversalTableItem *UniversalTableSortModel::itemAt(const QModelIndex &index) const
{
    return index.isValid() ? m_table->getItem(mapToSource(index).row()) : nullptr;
}

QVariant UniversalTableSortModel::data(const QModelIndex &index, int role) const
{
    const bool isNumber = index.isValid() && index.column() == 0 && role == Qt::DisplayRole;
    return isNumber ? QVariant(index.row() + 1) : QSortFilterProxyModel::data(index, role);
}

} // namespace Widgets
