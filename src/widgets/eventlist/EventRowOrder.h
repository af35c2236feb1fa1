#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/eventlist/WidgetEventModel.h"

#include <cstdint>
#include <vector>

namespace Widgets {

/// The order of a list's rows by one column. Those that are the same there stand with the newest
/// first; by time, entries of the same time as they were stored. Reads the model as it is at each
/// call. GUI thread.
class WIDGETS_EXPORT EventRowOrder
{
public:
    using Row = std::uint32_t;
    using Rows = std::vector<Row>;

    /// The model outlives this, or is replaced by null, which has no rows.
    void setModel(const WidgetEventModel *model) { m_model = model; }

    /// A kind of column (Nodes::ColumnInfo::enColumn); the time to begin with, newest first.
    void setColumn(int kind, Qt::SortOrder order);
    int column() const { return m_kind; }
    Qt::SortOrder order() const { return m_order; }

    /// All rows of the model in order.
    Rows sorted() const;
    /// Whether one row stands before another: no two are the same.
    bool isBefore(Row left, Row right) const;
    /// Puts a few rows in order.
    void sortFew(Rows &rows) const;
    /// Puts the sorted `added` into the sorted `rows`.
    void merge(Rows &rows, const Rows &added) const;
    /// For each row of the sorted `added` how many of the sorted `rows` stand before it.
    std::vector<std::size_t> placesOf(const Rows &added, const Rows &rows) const;

private:
    const WidgetEventItem &item(Row row) const { return m_model->getItems()[row]; }
    bool isEarlier(Row left, Row right) const;
    Rows byTime() const;
    int compare(Row left, Row right) const;
    std::uint64_t key(const WidgetEventItem &item) const;
    void sortByKey(Rows &rows) const;

    const WidgetEventModel *m_model = nullptr;
    int m_kind = Nodes::ColumnInfo::ColumnTime;
    Qt::SortOrder m_order = Qt::DescendingOrder;
};

} // namespace Widgets
