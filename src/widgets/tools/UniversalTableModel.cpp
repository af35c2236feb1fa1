#include "widgets/tools/UniversalTableModel.h"

#include "utils/convert/PlainTip.h"

#include <QStringList>

#include <algorithm>

namespace Widgets {

namespace {

QStringList titles(UniversalTableType type)
{
    if (type == UniversalTableNodes)
        return {QStringLiteral("№"), QStringLiteral("Имя узла"), QStringLiteral("Описание")};
    return {QStringLiteral("№"), QStringLiteral("Имя файла"), QStringLiteral("Размер (МБ)"),
            QStringLiteral("Время последнего изменения")};
}

bool isNumber(int column, UniversalTableType type)
{
    return column == 0 || (column == 2 && type == UniversalTableFiles);
}

} // namespace

UniversalTableModel::UniversalTableModel(const QList<FileInfoData> &files, UniversalTableType type,
                                         QObject *parent)
    : QAbstractTableModel(parent), m_type(type), m_columnCount(titles(type).size())
{
    for (const FileInfoData &file : files)
        m_items.append(new UniversalTableItem(file, this));
}

UniversalTableModel::UniversalTableModel(const Nodes::NodesArray &nodes, UniversalTableType type,
                                         QObject *parent)
    : QAbstractTableModel(parent), m_type(type), m_columnCount(titles(type).size())
{
    for (const Nodes::NodeLink &node : nodes)
        m_items.append(new UniversalTableItem(node, this));
}

void UniversalTableModel::setColumnCount(int count)
{
    const int wanted = std::clamp(count, 0, titles(m_type).size());
    if (wanted == m_columnCount)
        return;
    beginResetModel();
    m_columnCount = wanted;
    endResetModel();
}

int UniversalTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_items.size();
}

int UniversalTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_columnCount;
}

QVariant UniversalTableModel::data(const QModelIndex &index, int role) const
{
    const UniversalTableItem *item = index.isValid() ? getItem(index.row()) : nullptr;
    if (!item)
        return {};
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return column == 0 ? QVariant(index.row() + 1) : item->getData(column, m_type);
    case SortRole:
        return column == 0 ? QVariant(index.row()) : item->sortKey(column, m_type);
    case Qt::ToolTipRole:
        return column == 1 || column == 2
                   ? QVariant(Utils::PlainTip(item->getData(column, m_type).toString()))
                   : QVariant();
    case Qt::TextAlignmentRole:
        return isNumber(column, m_type) ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter))
                                        : QVariant();
    case ItemRole:
        return QVariant::fromValue(getItem(index.row()));
    default:
        return {};
    }
}

QVariant UniversalTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const QString title = titles(m_type).value(section);
    return title.isEmpty() ? QVariant() : QVariant(title);
}

bool UniversalTableModel::removeRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || count <= 0 || row + count > m_items.size())
        return false;
    beginRemoveRows({}, row, row + count - 1);
    for (int i = 0; i < count; ++i)
        m_items.takeAt(row)->deleteLater(); // somebody may still hold it
    endRemoveRows();
    return true;
}

} // namespace Widgets
