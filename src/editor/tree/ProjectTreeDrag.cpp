// What is dragged out of the project tree and dropped into it.
#include "editor/tree/NodeMime.h"
#include "editor/tree/ProjectTreeModel.h"
#include "editor/tree/TreeEdits.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QMimeData>

#include <algorithm>

namespace Editor {

namespace {

/// Rows from the root down, which order indexes as the tree shows them.
std::vector<int> place(QModelIndex index)
{
    std::vector<int> rows;
    for (; index.isValid(); index = index.parent())
        rows.insert(rows.begin(), index.row());
    return rows;
}

} // namespace

Qt::DropActions ProjectTreeModel::supportedDropActions() const
{
    return Qt::MoveAction | Qt::CopyAction;
}

Qt::DropActions ProjectTreeModel::supportedDragActions() const
{
    return Qt::MoveAction | Qt::CopyAction | Qt::LinkAction;
}

QStringList ProjectTreeModel::mimeTypes() const
{
    return NodeMime::formats();
}

QMimeData *ProjectTreeModel::mimeData(const QModelIndexList &indexes) const
{
    const Nodes::NodesCollection *tree = project();
    return tree ? NodeMime::make(*tree, inTreeOrder(indexes)) : nullptr;
}

Nodes::NodeLinks ProjectTreeModel::inTreeOrder(const QModelIndexList &indexes) const
{
    std::vector<std::pair<std::vector<int>, Nodes::NodeLink>> places;
    for (const QModelIndex &index : indexes) {
        if (index.column() == ColumnName)
            places.emplace_back(place(index), nodeAt(index));
    }
    std::sort(places.begin(), places.end(),
              [](const auto &l, const auto &r) { return l.first < r.first; });
    Nodes::NodeLinks nodes;
    for (const auto &placed : places)
        nodes.push_back(placed.second);
    return nodes;
}

Nodes::NodeLink ProjectTreeModel::nodeBefore(int row, const QModelIndex &parent) const
{
    const TreeItem *item = itemAt(parent);
    if (!item || row < 0)
        return {};
    if (row < rowCount(parent))
        return nodeAt(index(row, ColumnName, parent));
    // Below the last row: with a filter other nodes may follow, which are not in sight.
    const Nodes::NodeLink last = nodeAt(index(rowCount(parent) - 1, ColumnName, parent));
    const Nodes::ConfigNode *above = nodeOf(*item);
    const int next = above ? above->IndexOf(last.GetNode()) + 1 : 0;
    return Nodes::NodeLink(next > 0 ? above->GetNodeAt(next) : nullptr);
}

bool ProjectTreeModel::canDropMimeData(const QMimeData *data, Qt::DropAction action, int, int,
                                       const QModelIndex &parent) const
{
    const Nodes::NodesCollection *tree = project();
    const Nodes::NodeLink target = nodeAt(parent);
    if (!tree || !data || !m_edits || !m_edits->isAllowed() || !target.isValid())
        return false;
    const Nodes::NodeLinks nodes = NodeMime::own(*data, *tree);
    return !nodes.empty() && m_edits->takes(target, nodes, action == Qt::CopyAction);
}

bool ProjectTreeModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row,
                                    int column, const QModelIndex &parent)
{
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    const Nodes::NodeLinks nodes = NodeMime::own(*data, *project());
    const Nodes::NodeLink before = nodeBefore(row, parent);
    if (action == Qt::CopyAction)
        m_edits->copyTo(nodes, nodeAt(parent), before);
    else
        m_edits->move(nodes, nodeAt(parent), before);
    return false; // the view must not remove the rows: they have followed the nodes already
}

} // namespace Editor
