#pragma once

#include "editor/tree/TreeItem.h"
#include "editor/tree/TreeSearch.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Connection.h"

#include <QAbstractItemModel>

#include <memory>
#include <unordered_map>
#include <unordered_set>

namespace Nodes {
class ConfigNode;
class NodesCollection;
struct NodeChange;
} // namespace Nodes

namespace Editor {

class TreeEdits;

/// The tree of a project from its root. Rows are made when a view first asks for them, and follow
/// every change of the tree. With a filter it shows the nodes found and those above them; nodes
/// that are added then are shown until the filter changes. GUI thread.
class ProjectTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum enColumn { ColumnName, ColumnKind, ColumnDescription, ColumnCount };

    explicit ProjectTreeModel(QObject *parent = nullptr);
    ~ProjectTreeModel() override;

    /// Null shows nothing. The project may go before the model is told.
    void setProject(Nodes::NodesCollection *project);
    Nodes::NodesCollection *project() const;
    /// What names typed and rows dropped are handed to; without it nothing can be changed. Not
    /// owned, outlives the model.
    void setEdits(TreeEdits *edits) { m_edits = edits; }

    /// Empty for an index that is none of this model's.
    Nodes::NodeLink nodeAt(const QModelIndex &index) const;
    /// Invalid when the node is not in the tree or the filter hides it.
    QModelIndex indexOf(const Nodes::NodeLink &node, int column = ColumnName) const;

    /// Nodes of the indexes in the order that the tree shows them in, each once.
    Nodes::NodeLinks inTreeOrder(const QModelIndexList &indexes) const;

    /// See TreeSearch::find. A text without words shows all.
    void setFilter(const QString &text);
    bool isFiltered() const { return m_isFiltered; }
    /// Nodes that the filter found, in tree order; empty without a filter.
    const std::vector<unsigned long> &hits() const { return m_hits; }

    /// Nodes that are shown as about to be moved elsewhere.
    void setCut(const Nodes::NodeLinks &nodes);

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &index) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    Qt::DropActions supportedDropActions() const override;
    Qt::DropActions supportedDragActions() const override;
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

private:
    TreeItem *itemAt(const QModelIndex &index) const;
    TreeItem *findItem(unsigned long id) const;
    QModelIndex indexOf(const TreeItem &item, int column) const;
    Nodes::ConfigNode *nodeOf(const TreeItem &item) const;
    bool isShown(unsigned long id) const;
    std::vector<unsigned long> childrenOf(const TreeItem &item) const;

    void rebuild();
    std::unique_ptr<TreeItem> makeItem(unsigned long id, TreeItem *parent) const;
    void dropItem(const TreeItem &item) const;
    void fetch(TreeItem &item) const;
    /// As fetch, with the children as they were before the change.
    void fetchBefore(TreeItem &item, const Nodes::NodeChange &change) const;
    static void renumber(TreeItem &item, std::size_t from);

    void onChanged(const Nodes::NodeChange &change);
    void onTextChanged(const Nodes::NodeLink &node, int column);
    void onChildrenChanged(const Nodes::NodeChange &change);
    /// Lets the filter show the node with what is below it; the nearest node above whose row is
    /// there already.
    Nodes::NodeLink admit(const Nodes::NodeLink &node);
    void reconcile(TreeItem &item);
    /// From that row on, up to the end of what differs.
    void reorder(TreeItem &item, const std::vector<unsigned long> &wanted, std::size_t first,
                 std::size_t end);
    void insertItems(TreeItem &item, std::size_t at, const std::vector<unsigned long> &ids);
    void removeItems(TreeItem &item, std::size_t at, std::size_t count);
    void moveItem(TreeItem &item, std::size_t from, std::size_t to);

    QVariant nodeData(const Nodes::ConfigNode &node, int column, int role) const;
    /// Node that dropped ones come before; empty: they come last.
    Nodes::NodeLink nodeBefore(int row, const QModelIndex &parent) const;

    TreeEdits *m_edits = nullptr;
    unsigned long m_token = 0; ///< of the project; 0: none
    Nodes::ScopedConnection m_connection;
    mutable std::unordered_map<unsigned long, TreeItem *> m_items;
    mutable std::unique_ptr<TreeItem> m_root;

    TreeSearch m_search;
    bool m_isFiltered = false;
    std::vector<unsigned long> m_hits;
    std::unordered_set<unsigned long> m_shown; ///< while filtered
    std::unordered_set<unsigned long> m_cut;
};

} // namespace Editor
