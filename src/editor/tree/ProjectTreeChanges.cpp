// How the rows of the project tree follow the nodes.
#include "editor/tree/ProjectTreeModel.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"

#include <algorithm>

namespace Editor {

void ProjectTreeModel::onChanged(const Nodes::NodeChange &change)
{
    switch (change.what) {
    case Nodes::NodeChange::Name:
        onTextChanged(change.node, ColumnName);
        break;
    case Nodes::NodeChange::Description:
        onTextChanged(change.node, ColumnDescription);
        break;
    case Nodes::NodeChange::ChildAdded:
    case Nodes::NodeChange::ChildRemoved:
    case Nodes::NodeChange::ChildMoved:
        onChildrenChanged(change);
        break;
    case Nodes::NodeChange::Properties:
        break;
    }
}

void ProjectTreeModel::onTextChanged(const Nodes::NodeLink &node, int column)
{
    m_search.forget();
    if (const TreeItem *item = findItem(node.GetNodeId()))
        emit dataChanged(indexOf(*item, column), indexOf(*item, column));
}

void ProjectTreeModel::onChildrenChanged(const Nodes::NodeChange &change)
{
    TreeItem *item = findItem(change.node.GetNodeId());
    if (change.what == Nodes::NodeChange::ChildAdded && m_isFiltered) {
        const TreeItem *above = findItem(admit(change.child).GetNodeId());
        item = const_cast<TreeItem *>(above);
    }
    if (!item)
        return;
    if (item->id == change.node.GetNodeId())
        fetchBefore(*item, change);
    else
        fetch(*item);
    reconcile(*item);
}

Nodes::NodeLink ProjectTreeModel::admit(const Nodes::NodeLink &node)
{
    const Nodes::ConfigNode *top = node.GetNode();
    if (!top)
        return {};
    m_shown.insert(top->GetId());
    for (const Nodes::NodeLink &below : top->GetNodes(true))
        m_shown.insert(below.GetNodeId());
    const Nodes::ConfigNode *above = top->GetParent();
    while (above && !findItem(above->GetId())) {
        m_shown.insert(above->GetId());
        above = above->GetParent();
    }
    return Nodes::NodeLink(above);
}

void ProjectTreeModel::dropItem(const TreeItem &item) const
{
    for (const auto &child : item.children)
        dropItem(*child);
    const auto known = m_items.find(item.id);
    if (known != m_items.end() && known->second == &item)
        m_items.erase(known);
}

void ProjectTreeModel::renumber(TreeItem &item, std::size_t from)
{
    for (std::size_t i = from; i < item.children.size(); ++i)
        item.children[i]->row = int(i);
}

void ProjectTreeModel::fetchBefore(TreeItem &item, const Nodes::NodeChange &change) const
{
    if (item.isFetched)
        return;
    fetch(item);
    const unsigned long id = change.child.GetNodeId();
    const auto present =
        std::find_if(item.children.begin(), item.children.end(),
                     [id](const std::unique_ptr<TreeItem> &child) { return child->id == id; });
    if (change.what == Nodes::NodeChange::ChildAdded && present != item.children.end()) {
        dropItem(**present);
        item.children.erase(present);
    } else if (change.what == Nodes::NodeChange::ChildRemoved && present == item.children.end() &&
               isShown(id)) {
        item.children.push_back(makeItem(id, &item));
    }
    renumber(item, 0);
}

void ProjectTreeModel::insertItems(TreeItem &item, std::size_t at,
                                   const std::vector<unsigned long> &ids)
{
    if (ids.empty())
        return;
    beginInsertRows(indexOf(item, ColumnName), int(at), int(at + ids.size()) - 1);
    std::vector<std::unique_ptr<TreeItem>> made;
    for (const unsigned long id : ids)
        made.push_back(makeItem(id, &item));
    item.children.insert(item.children.begin() + long(at), std::make_move_iterator(made.begin()),
                         std::make_move_iterator(made.end()));
    renumber(item, at);
    endInsertRows();
}

void ProjectTreeModel::removeItems(TreeItem &item, std::size_t at, std::size_t count)
{
    if (count == 0)
        return;
    beginRemoveRows(indexOf(item, ColumnName), int(at), int(at + count) - 1);
    const auto first = item.children.begin() + long(at);
    const auto last = first + long(count);
    std::for_each(first, last, [this](const auto &child) { dropItem(*child); });
    // Views may still ask for what is below the rows until they are told.
    std::vector<std::unique_ptr<TreeItem>> gone(std::make_move_iterator(first),
                                                std::make_move_iterator(last));
    item.children.erase(first, last);
    renumber(item, at);
    endRemoveRows();
}

void ProjectTreeModel::moveItem(TreeItem &item, std::size_t from, std::size_t to)
{
    const QModelIndex parent = indexOf(item, ColumnName);
    beginMoveRows(parent, int(from), int(from), parent, int(from < to ? to + 1 : to));
    const auto at = [&item](std::size_t place) { return item.children.begin() + long(place); };
    if (from < to)
        std::rotate(at(from), at(from + 1), at(to + 1));
    else
        std::rotate(at(to), at(from), at(from + 1));
    renumber(item, std::min(from, to));
    endMoveRows();
}

/// Brings the rows below the item to what is there now, whatever has happened: a subscriber that
/// heard of a change before may have made the next one already.
void ProjectTreeModel::reconcile(TreeItem &item)
{
    const std::vector<unsigned long> wanted = childrenOf(item);
    const auto &rows = item.children;
    std::size_t first = 0;
    while (first < rows.size() && first < wanted.size() && rows[first]->id == wanted[first])
        ++first;
    std::size_t end = wanted.size();
    std::size_t rowsEnd = rows.size();
    while (rowsEnd > first && end > first && rows[rowsEnd - 1]->id == wanted[end - 1]) {
        --rowsEnd;
        --end;
    }
    if (first == rowsEnd)
        insertItems(item, first, {wanted.begin() + long(first), wanted.begin() + long(end)});
    else if (first == end)
        removeItems(item, first, rowsEnd - first);
    else
        reorder(item, wanted, first, end);
}

void ProjectTreeModel::reorder(TreeItem &item, const std::vector<unsigned long> &wanted,
                               std::size_t first, std::size_t end)
{
    const auto &rows = item.children;
    const auto wantedEnd = wanted.begin() + long(end);
    for (std::size_t row = first; row < end; ++row) {
        const auto at = wanted.begin() + long(row);
        while (row < rows.size() && std::find(at, wantedEnd, rows[row]->id) == wantedEnd)
            removeItems(item, row, 1);
        if (row < rows.size() && rows[row]->id == *at)
            continue;
        const auto place = std::find_if(rows.begin() + long(row), rows.end(),
                                        [at](const auto &child) { return child->id == *at; });
        if (place == rows.end()) {
            insertItems(item, row, {*at});
        } else if (place == rows.begin() + long(row) + 1) {
            // One that went down past the others: in one step instead of theirs.
            moveItem(item, row,
                     std::size_t(std::find(at, wantedEnd, rows[row]->id) - wanted.begin()));
            --row;
        } else {
            moveItem(item, std::size_t(place - rows.begin()), row);
        }
    }
    const std::size_t surplus = rows.size() - wanted.size();
    removeItems(item, end, surplus);
}

} // namespace Editor
