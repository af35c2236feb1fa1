#include "editor/compare/DifferencesModel.h"

#include "utils/convert/PlainTip.h"

namespace Editor {

namespace {

// The internal id of a row below a node: the node's row, counted from 1.
constexpr quintptr top = 0;

QString text(const std::string &bytes)
{
    return QString::fromStdString(bytes);
}

} // namespace

void DifferencesModel::setDifferences(std::vector<Nodes::NodeDifference> differences)
{
    beginResetModel();
    m_differences = std::move(differences);
    endResetModel();
}

const Nodes::NodeDifference *DifferencesModel::difference(const QModelIndex &index) const
{
    if (!index.isValid())
        return nullptr;
    const std::size_t row =
        index.internalId() == top ? std::size_t(index.row()) : std::size_t(index.internalId() - 1);
    return &m_differences[row];
}

const Nodes::PropertyDifference *DifferencesModel::property(const QModelIndex &index) const
{
    return index.isValid() && index.internalId() != top
               ? &difference(index)->properties[std::size_t(index.row())]
               : nullptr;
}

QString DifferencesModel::wordOf(const Nodes::NodeDifference &difference)
{
    if (difference.isAdded)
        return tr("＋ добавлено");
    if (difference.isRemoved)
        return tr("－ удалено");
    if (difference.isMoved)
        return tr("→ перемещено");
    return difference.properties.empty() ? tr("↕ порядок") : tr("≠ изменено");
}

QModelIndex DifferencesModel::index(int row, int column, const QModelIndex &parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? quintptr(parent.row()) + 1 : top);
}

QModelIndex DifferencesModel::parent(const QModelIndex &child) const
{
    if (!child.isValid() || child.internalId() == top)
        return {};
    return createIndex(int(child.internalId() - 1), 0, top);
}

int DifferencesModel::rowCount(const QModelIndex &parent) const
{
    if (!parent.isValid())
        return int(m_differences.size());
    const bool isNode = parent.internalId() == top && parent.column() == 0;
    return isNode ? int(m_differences[std::size_t(parent.row())].properties.size()) : 0;
}

int DifferencesModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}

QString DifferencesModel::nodeCell(const Nodes::NodeDifference &difference, int column)
{
    switch (column) {
    case WhatColumn:
        return wordOf(difference) + QStringLiteral(": ") +
               (difference.path.empty() ? tr("проект") : text(difference.path)) +
               QStringLiteral(" (%1)").arg(text(difference.kind));
    case BeforeColumn:
        return difference.isMoved ? text(difference.pathBefore) : QString();
    default:
        if (difference.below > 0)
            return tr("вместе с вложенными узлами: %L1").arg(difference.below);
        return difference.isMoved ? text(difference.path) : QString();
    }
}

QString DifferencesModel::propertyCell(const Nodes::PropertyDifference &property, int column)
{
    if (column == WhatColumn)
        return text(property.name);
    return text(column == BeforeColumn ? property.before : property.after);
}

QVariant DifferencesModel::data(const QModelIndex &index, int role) const
{
    const Nodes::NodeDifference *found = difference(index);
    if (!found || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const QString cell =
        index.internalId() == top
            ? nodeCell(*found, index.column())
            : propertyCell(found->properties[std::size_t(index.row())], index.column());
    return role == Qt::DisplayRole ? cell : Utils::PlainTip(cell);
}

QVariant DifferencesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QString titles[] = {tr("Что отличается"), tr("Было"), tr("Стало")};
    const bool isTitle = orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
                         section < ColumnCount;
    return isTitle ? QVariant(titles[section]) : QVariant();
}

} // namespace Editor
