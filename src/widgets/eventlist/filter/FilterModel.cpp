#include "widgets/eventlist/filter/FilterModel.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/visual/events/widgetEventList.h"
#include "utils/convert/PlainTip.h"

#include <functional>
#include <unordered_set>

namespace Widgets {

namespace {

using Visit = std::function<void(FilterItem &)>;

// Those below before the item itself.
void visitUp(FilterItem &item, const Visit &visit)
{
    for (const auto &child : item.getChildren())
        visitUp(*child, visit);
    visit(item);
}

Qt::CheckState stateOfChildren(const FilterItem &item)
{
    int checked = 0;
    int unchecked = 0;
    for (const auto &child : item.getChildren()) {
        checked += child->checkState() == Qt::Checked ? 1 : 0;
        unchecked += child->checkState() == Qt::Unchecked ? 1 : 0;
    }
    return checked == item.childCount()     ? Qt::Checked
           : unchecked == item.childCount() ? Qt::Unchecked
                                            : Qt::PartiallyChecked;
}

} // namespace

FilterModel::FilterModel(Nodes::widgetEventList *node, QObject *parent)
    : QAbstractItemModel(parent), m_root(std::make_unique<FilterItem>())
{
    if (!node)
        return;
    m_sources = node->GetSources();
    setNodesCollection(node->GetNodesCollection());
}

FilterModel::~FilterModel() = default;

void FilterModel::setNodesCollection(Nodes::NodesCollection *collection)
{
    beginResetModel();
    m_root = std::make_unique<FilterItem>();
    if (const Nodes::ConfigNode *root = collection ? collection->GetRoot() : nullptr)
        m_root->appendChild(FilterItem::createItem(root->GetNodeLink()));
    m_project = Nodes::ScopedConnection();
    if (collection)
        m_project = collection->ConnectChanged([this](const Nodes::NodeChange &change) {
            if (change.what == Nodes::NodeChange::ChildAdded)
                onNodeAdded(change.node, change.child);
            else if (change.what == Nodes::NodeChange::ChildRemoved)
                onNodeRemoved(change.node, change.child);
        });
    addMissing(m_sources);
    std::unordered_set<unsigned long> ticked;
    for (const Nodes::NodeLink &source : m_sources)
        ticked.insert(source.GetNodeId());
    visitUp(*m_root, [&ticked](FilterItem &item) {
        if (ticked.count(item.getNodeLink().GetNodeId()) != 0)
            item.setCheckState(Qt::Checked);
        else if (item.childCount() > 0 && stateOfChildren(item) != Qt::Unchecked)
            item.setCheckState(Qt::PartiallyChecked);
    });
    endResetModel();
}

// So that the operator sees all that the filter has.
void FilterModel::addMissing(const Nodes::NodesArray &sources)
{
    std::unordered_set<unsigned long> present;
    visitUp(*m_root,
            [&present](FilterItem &item) { present.insert(item.getNodeLink().GetNodeId()); });
    for (const Nodes::NodeLink &source : sources) {
        if (source.isEmpty() || !present.insert(source.GetNodeId()).second)
            continue;
        FilterItem *item = m_root->appendChild(std::make_unique<FilterItem>(source));
        item->setSpecialDelete(!source.isValid());
    }
}

Nodes::NodesArray FilterModel::getNa() const
{
    Nodes::NodesArray ticked;
    visitUp(*m_root, [&ticked](FilterItem &item) {
        if (item.checkState() == Qt::Checked && !item.getNodeLink().isEmpty())
            ticked.push_back(item.getNodeLink());
    });
    return ticked;
}

void FilterModel::uncheckAll()
{
    for (int row = m_root->childCount(); row-- > 0;)
        (void)setData(index(row, 0), Qt::Unchecked, Qt::CheckStateRole);
}

FilterItem *FilterModel::itemOf(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<FilterItem *>(index.internalPointer()) : m_root.get();
}

QModelIndex FilterModel::indexOf(const FilterItem *item) const
{
    return item == m_root.get() ? QModelIndex()
                                : createIndex(item->row(), 0, const_cast<FilterItem *>(item));
}

QModelIndex FilterModel::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column, itemOf(parent)->child(row))
                                         : QModelIndex();
}

QModelIndex FilterModel::parent(const QModelIndex &child) const
{
    return child.isValid() ? indexOf(itemOf(child)->parent()) : QModelIndex();
}

int FilterModel::rowCount(const QModelIndex &parent) const
{
    return parent.column() > 0 ? 0 : itemOf(parent)->childCount();
}

int FilterModel::columnCount(const QModelIndex &) const
{
    return 1;
}

QVariant FilterModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const FilterItem &item = *itemOf(index);
    const Nodes::ConfigNode *node = item.node();
    switch (role) {
    case Qt::DisplayRole:
        return node ? QString::fromStdString(node->GetName())
                    : QStringLiteral("Узел %1 (удалён)").arg(item.getNodeLink().GetNodeId());
    case Qt::ToolTipRole:
        return node ? Utils::PlainTip(QString::fromStdString(node->GetPath())) : QVariant();
    case Qt::CheckStateRole:
        return item.checkState();
    default:
        return {};
    }
}

QVariant FilterModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return QStringLiteral("Имя узла");
    return QAbstractItemModel::headerData(section, orientation, role);
}

Qt::ItemFlags FilterModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable
                           : Qt::NoItemFlags;
}

bool FilterModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != Qt::CheckStateRole)
        return false;
    FilterItem *item = itemOf(index);
    const auto state = value.toInt() == Qt::Unchecked ? Qt::Unchecked : Qt::Checked;
    if (item->getSpecialDelete() && state == Qt::Unchecked) {
        removeItem(item);
        return true;
    }
    visitUp(*item, [state](FilterItem &below) { below.setCheckState(state); });
    emit dataChanged(index, index, {Qt::CheckStateRole});
    announceSubtree(index);
    updateParents(item);
    return true;
}

void FilterModel::announceSubtree(const QModelIndex &index)
{
    const int rows = rowCount(index);
    if (rows == 0)
        return;
    emit dataChanged(this->index(0, 0, index), this->index(rows - 1, 0, index),
                     {Qt::CheckStateRole});
    for (int row = 0; row < rows; ++row)
        announceSubtree(this->index(row, 0, index));
}

void FilterModel::updateParents(FilterItem *item)
{
    for (FilterItem *above = item->parent(); above && above != m_root.get();
         above = above->parent()) {
        above->setCheckState(stateOfChildren(*above));
        emit dataChanged(indexOf(above), indexOf(above), {Qt::CheckStateRole});
    }
}

void FilterModel::removeItem(FilterItem *item)
{
    FilterItem *parent = item->parent();
    const int row = item->row();
    beginRemoveRows(indexOf(parent), row, row);
    parent->removeChild(row);
    endRemoveRows();
}

// Places without a source are not listed: with its first one such a place comes too.
void FilterModel::onNodeAdded(Nodes::NodeLink parent, Nodes::NodeLink node)
{
    FilterItem *above = nullptr;
    while (!parent.isEmpty() && !(above = m_root->find(parent.GetNodeId()))) {
        const Nodes::ConfigNode *place = parent.GetNode();
        const Nodes::ConfigNode *around = place ? place->GetParent() : nullptr;
        node = parent;
        parent = around ? around->GetNodeLink() : Nodes::NodeLink();
    }
    if (!above || m_root->find(node.GetNodeId()))
        return;
    std::unique_ptr<FilterItem> item = FilterItem::createItem(node);
    if (!item)
        return;
    beginInsertRows(indexOf(above), above->childCount(), above->childCount());
    FilterItem *added = above->appendChild(std::move(item));
    endInsertRows();
    updateParents(added);
}

void FilterModel::onNodeRemoved(Nodes::NodeLink, Nodes::NodeLink node)
{
    FilterItem *item = node.isEmpty() ? nullptr : m_root->find(node.GetNodeId());
    if (!item || item == m_root.get())
        return;
    FilterItem *above = item->parent();
    removeItem(item);
    if (above->childCount() > 0)
        updateParents(above->child(0));
}

} // namespace Widgets
