#pragma once

#include "utils/UtilsExport.h"

#include <QCollator>
#include <QSortFilterProxyModel>
#include <QVector>

#include <functional>

namespace Utils {

/// Sorts rows by several columns, the first added being the most significant; rows that are equal
/// in all of them keep the order of the source. Can leave out rows that are no longer active.
/// Texts compare by the Russian alphabet without regard to case, numbers in them by their value.
/// GUI thread.
class UTILS_EXPORT SortingModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /// Whether a row of the source, given by its first column, is inactive.
    using InactiveTest = std::function<bool(const QModelIndex &sourceRow)>;
    /// Below, at or above 0 as one top-level row of the source stands before, beside or after
    /// another by that column, in ascending order.
    using Comparison = std::function<int(int column, int left, int right)>;

    explicit SortingModel(QObject *parent = nullptr);

    /// Adds the next less significant column; one that is a key already only gets the new order.
    /// Negative columns are ignored. The rows are sorted anew.
    void addSortColumn(int column, Qt::SortOrder order = Qt::AscendingOrder);
    /// Back to the order of the source.
    void clearSortColumns();
    /// Most significant column; -1 while none is set.
    int sortColumn() const;

    /// For sources that compare their rows faster than by data of the sort role.
    void setComparison(Comparison comparison);
    /// Stands where the text stands among others, and compares faster. GUI thread.
    static QCollatorSortKey textKey(const QString &text);

    /// Until a test is set, no row counts as inactive.
    void setInactiveTest(InactiveTest test);

    void setSourceModel(QAbstractItemModel *source) override;
    /// Makes `column` the only key, as a click on its header asks; -1 clears.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

public slots:
    /// Makes `column` the only key; when it is that already, turns its order round.
    void sortColumn(int column);
    /// Filters and sorts anew: after what the test looks at changed without notice, and after each
    /// batch while dynamicSortFilter is off.
    void updateSort();
    void setHideInactive(bool isHiding);

protected:
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    struct Key
    {
        int column;
        Qt::SortOrder order;
    };

    void applyKeys();
    /// Below, at or above 0 as `left` stands before, beside or after `right` in ascending order.
    int compare(const QModelIndex &left, const QModelIndex &right) const;
    void followLesserKeys(const QModelIndex &topLeft, const QModelIndex &bottomRight);

    QVector<Key> m_keys;
    Comparison m_comparison; // empty: data of the sort role are compared
    InactiveTest m_isInactive;
    bool m_isHidingInactive = false;
    QMetaObject::Connection m_changes;
};

} // namespace Utils
