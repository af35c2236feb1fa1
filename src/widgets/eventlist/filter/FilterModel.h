#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/eventlist/filter/FilterItem.h"

#include "nodes/model/NodesArray.h"
#include "nodes/values/Connection.h"

#include <QAbstractItemModel>

#include <memory>

namespace Nodes {
class NodesCollection;
class widgetEventList;
} // namespace Nodes

namespace Widgets {

/// The nodes of a project whose events can be chosen, to tick: those that are in the list's filter
/// are. Ticking a node ticks all below it. Follows the project. GUI thread.
class WIDGETS_EXPORT FilterModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit FilterModel(Nodes::widgetEventList *node, QObject *parent = nullptr);
    ~FilterModel() override;

    /// Null: nothing.
    void setNodesCollection(Nodes::NodesCollection *collection);
    /// What is ticked.
    Nodes::NodesArray getNa() const;
    void uncheckAll();

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

public slots:
    void onNodeAdded(Nodes::NodeLink parent, Nodes::NodeLink node);
    void onNodeRemoved(Nodes::NodeLink parent, Nodes::NodeLink node);

private:
    FilterItem *itemOf(const QModelIndex &index) const;
    QModelIndex indexOf(const FilterItem *item) const;
    void removeItem(FilterItem *item);
    void announceSubtree(const QModelIndex &index);
    void updateParents(FilterItem *item);
    void addMissing(const Nodes::NodesArray &sources);

    Nodes::NodesArray m_sources; // ticked at first
    Nodes::ScopedConnection m_project;
    std::unique_ptr<FilterItem> m_root;
};

} // namespace Widgets
