#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/eventlist/WidgetEventItem.h"

#include "nodes/events/EventInfo.h"
#include "nodes/visual/events/ColumnInfo.h"
#include "utils/relay/WatchedNode.h"

#include <QAbstractTableModel>
#include <QStringList>

#include <memory>
#include <vector>

namespace Nodes {
class widgetEventList;
}

namespace Widgets {

/// Events in the order of their coming, a row each. Every kind of column there is (see
/// Nodes::ColumnInfo) is one of the model, in the order of their codes; which are seen and where is
/// the view's. GUI thread.
class WIDGETS_EXPORT WidgetEventModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Role {
        SortRole = Qt::UserRole, ///< see WidgetEventItem::sortData
        SourceRole               ///< Nodes::NodeLink
    };
    using Items = std::vector<WidgetEventItem>;

    explicit WidgetEventModel(Nodes::widgetEventList *node, QObject *parent = nullptr);
    ~WidgetEventModel() override;

    const Items &getItems() const { return m_items; }
    const EventPool &pool() const { return *m_pool; }
    const std::vector<Nodes::ColumnInfo> &columns() const { return m_columns; }
    /// Column that shows that (Nodes::ColumnInfo::enColumn).
    static int columnOf(int kind) { return kind - Nodes::ColumnInfo::ColumnTime; }
    static int kindOf(int column) { return column + Nodes::ColumnInfo::ColumnTime; }
    /// Users of the rows, by name; "" for the system itself.
    QStringList users() const;
    /// Memory of rows and texts.
    std::size_t bytes() const;

    /// Adds a row for each event behind those there are, `isFiltered`: of those only whose source
    /// is one of the node's. Nothing happens when there is none.
    void appendItems(const std::vector<Nodes::EventInfo> &events, bool isFiltered = false);
    /// Rows whose entry of the journal is among these show what has become of it.
    void updateItems(const std::vector<Nodes::EventInfo> &events);
    void clear();
    /// Titles are taken from the node again.
    void updateColumns();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    Utils::WatchedNode<Nodes::widgetEventList> m_node;
    std::vector<Nodes::ColumnInfo> m_columns;
    std::unique_ptr<EventPool> m_pool;
    Items m_items;
};

} // namespace Widgets
