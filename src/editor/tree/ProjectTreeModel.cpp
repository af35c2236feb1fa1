#include "editor/tree/ProjectTreeModel.h"

#include "editor/tree/KindIcons.h"
#include "editor/tree/TreeEdits.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QBrush>
#include <QGuiApplication>
#include <QPalette>

namespace Editor {

namespace {

QString toolTip(const Nodes::ConfigNode &node)
{
    const QString path = QString::fromStdString(node.GetPath());
    QStringList lines{
        path.isEmpty() ? QString::fromStdString(node.GetName()) : path,
        QStringLiteral("%1, № %2")
            .arg(QString::fromStdString(node.GetNodeType().GetSubtypeNameTranslated()))
            .arg(node.GetId())};
    if (!node.GetDescription().empty())
        lines.append(QString::fromStdString(node.GetDescription()));
    for (QString &line : lines)
        line = line.toHtmlEscaped();
    return QStringLiteral("<p style='white-space:pre'>%1</p>")
        .arg(lines.join(QStringLiteral("<br>")));
}

} // namespace

ProjectTreeModel::ProjectTreeModel(QObject *parent) : QAbstractItemModel(parent) {}

ProjectTreeModel::~ProjectTreeModel() = default;

void ProjectTreeModel::setProject(Nodes::NodesCollection *project)
{
    m_connection = project ? project->ConnectChanged(
                                 [this](const Nodes::NodeChange &change) { onChanged(change); })
                           : Nodes::Connection();
    m_token = project ? project->GetToken() : 0;
    m_search.forget();
    m_isFiltered = false;
    m_hits.clear();
    m_shown.clear();
    m_cut.clear();
    rebuild();
}

Nodes::NodesCollection *ProjectTreeModel::project() const
{
    return Nodes::NodesCollection::FromToken(m_token);
}

void ProjectTreeModel::rebuild()
{
    beginResetModel();
    m_items.clear();
    m_root.reset();
    const Nodes::NodesCollection *tree = project();
    if (tree && tree->GetRoot() && isShown(tree->GetRoot()->GetId()))
        m_root = makeItem(tree->GetRoot()->GetId(), nullptr);
    endResetModel();
}

void ProjectTreeModel::setFilter(const QString &text)
{
    const Nodes::NodesCollection *tree = project();
    m_isFiltered = tree && !text.simplified().isEmpty();
    TreeSearch::Found found;
    if (m_isFiltered)
        found = m_search.find(*tree, text);
    m_hits = std::move(found.hits);
    m_shown = std::move(found.shown);
    rebuild();
}

void ProjectTreeModel::setCut(const Nodes::NodeLinks &nodes)
{
    std::unordered_set<unsigned long> changed = std::move(m_cut);
    m_cut.clear();
    for (const Nodes::NodeLink &node : nodes)
        m_cut.insert(node.GetNodeId());
    changed.insert(m_cut.begin(), m_cut.end());
    for (const unsigned long id : changed) {
        if (const TreeItem *item = findItem(id))
            emit dataChanged(indexOf(*item, ColumnName), indexOf(*item, ColumnCount - 1));
    }
}

bool ProjectTreeModel::isShown(unsigned long id) const
{
    return !m_isFiltered || m_shown.count(id) != 0;
}

TreeItem *ProjectTreeModel::itemAt(const QModelIndex &index) const
{
    return index.isValid() && index.model() == this
               ? static_cast<TreeItem *>(index.internalPointer())
               : nullptr;
}

TreeItem *ProjectTreeModel::findItem(unsigned long id) const
{
    const auto found = m_items.find(id);
    return found == m_items.end() ? nullptr : found->second;
}

Nodes::ConfigNode *ProjectTreeModel::nodeOf(const TreeItem &item) const
{
    const Nodes::NodesCollection *tree = project();
    return tree ? tree->FindNode(item.id) : nullptr;
}

Nodes::NodeLink ProjectTreeModel::nodeAt(const QModelIndex &index) const
{
    const TreeItem *item = itemAt(index);
    const Nodes::NodesCollection *tree = item ? project() : nullptr;
    return tree ? Nodes::NodeLink(item->id, tree) : Nodes::NodeLink();
}

QModelIndex ProjectTreeModel::indexOf(const TreeItem &item, int column) const
{
    return createIndex(item.row, column, const_cast<TreeItem *>(&item));
}

QModelIndex ProjectTreeModel::indexOf(const Nodes::NodeLink &node, int column) const
{
    const Nodes::ConfigNode *target = node.GetNode();
    if (!target || target->GetNodesCollection() != project())
        return {};
    for (const Nodes::ConfigNode *above : target->GetPathNodes()) {
        TreeItem *item = findItem(above->GetId());
        if (!item)
            return {};
        if (above == target)
            return indexOf(*item, column);
        fetch(*item);
    }
    return {};
}

std::unique_ptr<TreeItem> ProjectTreeModel::makeItem(unsigned long id, TreeItem *parent) const
{
    auto item = std::make_unique<TreeItem>();
    item->id = id;
    item->parent = parent;
    m_items[id] = item.get();
    return item;
}

std::vector<unsigned long> ProjectTreeModel::childrenOf(const TreeItem &item) const
{
    std::vector<unsigned long> ids;
    const Nodes::ConfigNode *node = nodeOf(item);
    if (!node)
        return ids;
    ids.reserve(std::size_t(node->GetNodeCount()));
    for (const auto &child : node->Children()) {
        if (isShown(child->GetId()))
            ids.push_back(child->GetId());
    }
    return ids;
}

void ProjectTreeModel::fetch(TreeItem &item) const
{
    if (item.isFetched)
        return;
    item.isFetched = true;
    for (const unsigned long id : childrenOf(item)) {
        item.children.push_back(makeItem(id, &item));
        item.children.back()->row = int(item.children.size()) - 1;
    }
}

QModelIndex ProjectTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    if (row < 0 || column < 0 || column >= ColumnCount || row >= rowCount(parent))
        return {};
    TreeItem *above = itemAt(parent);
    return createIndex(row, column, above ? above->children[std::size_t(row)].get() : m_root.get());
}

QModelIndex ProjectTreeModel::parent(const QModelIndex &index) const
{
    const TreeItem *item = itemAt(index);
    return item && item->parent ? indexOf(*item->parent, ColumnName) : QModelIndex();
}

int ProjectTreeModel::rowCount(const QModelIndex &parent) const
{
    if (parent.column() > ColumnName)
        return 0;
    TreeItem *item = itemAt(parent);
    if (!item)
        return m_root ? 1 : 0;
    fetch(*item);
    return int(item->children.size());
}

int ProjectTreeModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}

bool ProjectTreeModel::hasChildren(const QModelIndex &parent) const
{
    const TreeItem *item = parent.column() > ColumnName ? nullptr : itemAt(parent);
    if (!item)
        return !parent.isValid() && m_root;
    if (item->isFetched || m_isFiltered)
        return rowCount(parent) > 0;
    const Nodes::ConfigNode *node = nodeOf(*item);
    return node && node->GetNodeCount() > 0;
}

QVariant ProjectTreeModel::nodeData(const Nodes::ConfigNode &node, int column, int role) const
{
    const bool isText = role == Qt::DisplayRole || role == Qt::EditRole;
    if (isText && column == ColumnName)
        return QString::fromStdString(node.GetName());
    if (isText && column == ColumnKind)
        return QString::fromStdString(node.GetNodeType().GetSubtypeNameTranslated());
    if (isText)
        return QString::fromStdString(node.GetDescription());
    if (role == Qt::DecorationRole && column == ColumnName)
        return KindIcons::of(node.GetNodeType());
    if (role == Qt::ToolTipRole)
        return toolTip(node);
    const bool isFaint = column == ColumnKind || m_cut.count(node.GetId()) != 0;
    if (role == Qt::ForegroundRole && isFaint)
        return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    return {};
}

QVariant ProjectTreeModel::data(const QModelIndex &index, int role) const
{
    const TreeItem *item = itemAt(index);
    const Nodes::ConfigNode *node = item ? nodeOf(*item) : nullptr;
    return node ? nodeData(*node, index.column(), role) : QVariant();
}

bool ProjectTreeModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const Nodes::NodeLink node = nodeAt(index);
    if (role != Qt::EditRole || !m_edits || !node.isValid())
        return false;
    return index.column() == ColumnName ? m_edits->rename(node, value.toString())
                                        : m_edits->describe(node, value.toString());
}

QVariant ProjectTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const char *const titles[ColumnCount] = {"Имя", "Вид", "Описание"};
    return section >= 0 && section < ColumnCount ? QString::fromUtf8(titles[section]) : QVariant();
}

Qt::ItemFlags ProjectTreeModel::flags(const QModelIndex &index) const
{
    const TreeItem *item = itemAt(index);
    if (!item)
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled;
    if (item->parent)
        flags |= Qt::ItemIsDragEnabled;
    if (m_edits && m_edits->isAllowed() && index.column() != ColumnKind)
        flags |= Qt::ItemIsEditable;
    return flags;
}

} // namespace Editor
