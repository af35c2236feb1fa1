#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/eventlist/EventRowFilter.h"
#include "widgets/eventlist/EventRowOrder.h"

#include <QAbstractProxyModel>

#include <vector>

namespace Nodes {
class widgetEventList;
}

namespace Widgets {

class WidgetEventModel;

/// Rows of a WidgetEventModel in the order of one column, those left out that a filter does not let
/// through: two vectors of row numbers and no copies, for a million rows. Columns are the source's.
/// A change of the order is a change of the layout, one of the filter a reset. GUI thread.
class WIDGETS_EXPORT WidgetEventSortModel : public QAbstractProxyModel
{
    Q_OBJECT

public:
    explicit WidgetEventSortModel(Nodes::widgetEventList *node, QObject *parent = nullptr);
    ~WidgetEventSortModel() override;

    /// A WidgetEventModel only; null for none.
    void setSourceModel(QAbstractItemModel *source) override;
    WidgetEventModel *events() const { return m_events; }

    void setFilter(const EventRowFilter &filter);
    const EventRowFilter &filter() const { return m_filter; }

    /// By a column of the model; columns there are not: by time, newest first.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    int sortColumn() const;
    Qt::SortOrder sortOrder() const { return m_order.order(); }

    /// Rows of the source in their order here.
    const std::vector<std::uint32_t> &rows() const { return shown(); }
    /// Row of the source.
    int sourceRow(int row) const { return int(shown()[std::size_t(row)]); }
    const WidgetEventItem &item(int row) const;
    /// The row that shows that one of the source; -1 when it is filtered away.
    int rowOf(int sourceRow) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    QModelIndex sibling(int row, int column, const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QModelIndex mapToSource(const QModelIndex &index) const override;
    QModelIndex mapFromSource(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    using Rows = EventRowOrder::Rows;

    const Rows &shown() const { return m_filter.isEmpty() ? m_all : m_passed; }
    Rows &shown() { return m_filter.isEmpty() ? m_all : m_passed; }
    void applyFilter();
    void rebuild();
    void onRowsInserted(const QModelIndex &parent, int first, int last);
    void onDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight);
    void onHeaderChanged(Qt::Orientation orientation, int first, int last);
    void onReset();
    void insertShown(const Rows &added);
    /// Does it as a change of the layout: selections stay with their rows.
    template <class Change> void relayout(Change change);

    WidgetEventModel *m_events = nullptr;
    EventRowOrder m_order;
    EventRowFilter m_filter;
    EventRowTest m_test;
    Rows m_all;    // every row of the source in order
    Rows m_passed; // of these what the filter lets through; empty without one
};

} // namespace Widgets
