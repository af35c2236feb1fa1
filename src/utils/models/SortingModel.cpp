#include "utils/models/SortingModel.h"

#include <algorithm>

namespace Utils {

namespace {

// The language is fixed, so that rows stand in the same order on a station without a locale.
const QCollator &collator()
{
    static const QCollator russian = [] {
        QCollator made{QLocale(QLocale::Russian)};
        made.setCaseSensitivity(Qt::CaseInsensitive);
        made.setNumericMode(true);
        return made;
    }();
    return russian;
}

} // namespace

SortingModel::SortingModel(QObject *parent) : QSortFilterProxyModel(parent) {}

QCollatorSortKey SortingModel::textKey(const QString &text)
{
    return collator().sortKey(text);
}

void SortingModel::addSortColumn(int column, Qt::SortOrder order)
{
    if (column < 0)
        return;
    const auto isOwn = [column](const Key &key) { return key.column == column; };
    const auto key = std::find_if(m_keys.begin(), m_keys.end(), isOwn);
    if (key == m_keys.end())
        m_keys.append({column, order});
    else
        key->order = order;
    applyKeys();
}

void SortingModel::clearSortColumns()
{
    m_keys.clear();
    applyKeys();
}

int SortingModel::sortColumn() const
{
    return m_keys.isEmpty() ? -1 : m_keys.first().column;
}

void SortingModel::setComparison(Comparison comparison)
{
    m_comparison = std::move(comparison);
    invalidate();
}

void SortingModel::setInactiveTest(InactiveTest test)
{
    m_isInactive = std::move(test);
    invalidateFilter();
}

void SortingModel::setSourceModel(QAbstractItemModel *source)
{
    disconnect(m_changes);
    QSortFilterProxyModel::setSourceModel(source);
    // Connected after the base class, which has taken the change in when the keys are looked at.
    if (source)
        m_changes = connect(source, &QAbstractItemModel::dataChanged, this,
                            &SortingModel::followLesserKeys);
}

void SortingModel::sort(int column, Qt::SortOrder order)
{
    m_keys.clear();
    if (column >= 0)
        m_keys.append({column, order});
    applyKeys();
}

void SortingModel::sortColumn(int column)
{
    const bool isOnlyKey = m_keys.size() == 1 && sortColumn() == column;
    const bool isTurned = isOnlyKey && m_keys.first().order == Qt::AscendingOrder;
    sort(column, isTurned ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void SortingModel::updateSort()
{
    invalidateFilter();
    invalidate();
}

void SortingModel::setHideInactive(bool isHiding)
{
    if (isHiding == m_isHidingInactive)
        return;
    m_isHidingInactive = isHiding;
    invalidateFilter();
}

// The base class sorts by the first key only when that key or its order changes; the others are
// known to lessThan alone. It compares the other way round for descending order, so the order
// handed to it is always ascending and each key applies its own.
void SortingModel::applyKeys()
{
    QSortFilterProxyModel::sort(sortColumn(), Qt::AscendingOrder);
    invalidate();
}

// The base class keeps rows sorted when data of the first key changes, not of the others.
void SortingModel::followLesserKeys(const QModelIndex &topLeft, const QModelIndex &bottomRight)
{
    const auto isChanged = [&](const Key &key) {
        return key.column >= topLeft.column() && key.column <= bottomRight.column();
    };
    if (!dynamicSortFilter() || m_keys.isEmpty() || isChanged(m_keys.first()))
        return;
    if (std::any_of(m_keys.cbegin(), m_keys.cend(), isChanged))
        invalidate();
}

int SortingModel::compare(const QModelIndex &left, const QModelIndex &right) const
{
    const QVariant first = left.data(sortRole());
    const QVariant second = right.data(sortRole());
    if (first.userType() == QMetaType::QString && second.userType() == QMetaType::QString)
        return collator().compare(first.toString(), second.toString());
    if (QSortFilterProxyModel::lessThan(left, right))
        return -1;
    return QSortFilterProxyModel::lessThan(right, left) ? 1 : 0;
}

bool SortingModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    for (const Key &key : m_keys) {
        const int order = m_comparison ? m_comparison(key.column, left.row(), right.row())
                                       : compare(left.sibling(left.row(), key.column),
                                                 right.sibling(right.row(), key.column));
        if (order != 0)
            return (order < 0) == (key.order == Qt::AscendingOrder);
    }
    return left.row() < right.row();
}

bool SortingModel::filterAcceptsRow(int row, const QModelIndex &parent) const
{
    if (m_isHidingInactive && m_isInactive && m_isInactive(sourceModel()->index(row, 0, parent)))
        return false;
    return QSortFilterProxyModel::filterAcceptsRow(row, parent);
}

} // namespace Utils
