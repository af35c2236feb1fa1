#include "editor/templates/InstanceModel.h"

#include "editor/tree/KindIcons.h"
#include "editor/wizard/NodeRecipe.h"

#include "nodes/actions/BasicTemplateAction.h"
#include "nodes/model/FreeName.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/templates/TemplateUse.h"
#include "nodes/templates/compositionTemplate.h"
#include "nodes/templates/templateArgument.h"
#include "nodes/templates/templateParameter.h"
#include "nodes/templates/widgetInstance.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"

#include <QBrush>
#include <QColor>

namespace Editor {

using Nodes::ConfigNode;
using Nodes::NodeLink;

namespace {

/// What the node makes instances of; null for most.
const ConfigNode *usedBy(const ConfigNode &node)
{
    if (const auto *action = dynamic_cast<const Nodes::BasicTemplateAction *>(&node))
        return action->GetTemplate();
    const auto *element = dynamic_cast<const Nodes::widgetInstance *>(&node);
    return element ? element->GetTemplate() : nullptr;
}

void collectUsers(const ConfigNode &node, const ConfigNode &source, Nodes::NodeLinks &users)
{
    if (usedBy(node) == &source)
        users.push_back(NodeLink(&node));
    for (const auto &child : node.Children())
        collectUsers(*child, source, users);
}

/// Beside the one that it is like.
void moveAside(NodeRecipe &recipe, const ConfigNode &last)
{
    constexpr int gap = 16;
    const auto *element = dynamic_cast<const Nodes::BasicWidget *>(&last);
    if (element)
        recipe.set(QStringLiteral("x"),
                   element->GetPosition().x + element->GetGeometry().width + gap);
}

NodeRecipe argumentRecipe(const std::string &parameter)
{
    return NodeRecipe(QStringLiteral("templateArgument"), QString::fromStdString(parameter));
}

} // namespace

InstanceModel::InstanceModel(Push push, QObject *parent)
    : QAbstractTableModel(parent), m_push(std::move(push))
{
}

NodeLink InstanceModel::templateOf(const ConfigNode *node)
{
    for (; node; node = node->GetParent()) {
        if (Nodes::TemplateUse::IsTemplate(*node))
            return NodeLink(node);
        if (const ConfigNode *source = usedBy(*node))
            return NodeLink(source);
    }
    return {};
}

void InstanceModel::setTemplate(const NodeLink &source)
{
    if (source == m_source)
        return;
    m_source = source;
    refresh();
}

void InstanceModel::refresh()
{
    beginResetModel();
    m_users.clear();
    m_parameters.clear();
    if (const ConfigNode *source = m_source.GetNode()) {
        for (const auto &child : source->Children()) {
            if (dynamic_cast<const Nodes::templateParameter *>(child.get()))
                m_parameters.push_back(child->GetName());
        }
        collectUsers(*source->GetNodesCollection()->GetRoot(), *source, m_users);
    }
    endResetModel();
}

void InstanceModel::addInstance()
{
    ConfigNode *last = m_users.empty() ? nullptr : m_users.back().GetNode();
    ConfigNode *source = m_source.GetNode();
    if (!source || (!last && dynamic_cast<const Nodes::compositionTemplate *>(source)))
        return; // which action shows a composition, and where, has to be said by the first
    ConfigNode *parent = last ? last->GetParent() : source->GetParent();
    const QString kind = last ? QString::fromStdString(last->GetKind()->key)
                              : QStringLiteral("actionShowWindowTemplate");
    std::vector<std::string_view> taken;
    for (const auto &child : parent->Children())
        taken.emplace_back(child->GetName());
    NodeRecipe recipe(kind,
                      QString::fromStdString(Nodes::FreeName(taken, source->GetName() + " 1", 2)));
    if (last) { // on the same display, in the same place
        for (const Nodes::PropertyDescriptor &property : last->GetKind()->properties)
            recipe.set(
                QString::fromStdString(property.key),
                QString::fromStdString(last->GetPropertyByValueId(property.valueId)->ToString()));
        moveAside(recipe, *last);
    } else {
        recipe.set(QStringLiteral("window"), m_source);
    }
    for (const std::string &parameter : m_parameters)
        recipe.add(argumentRecipe(parameter));
    m_push(new Utils::AddNodeLinkCommand(recipe.make(*source->GetNodesCollection()),
                                         NodeLink(parent)));
    refresh();
}

int InstanceModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_users.size());
}

int InstanceModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_parameters.size()) + 1;
}

ConfigNode *InstanceModel::argument(int row, const std::string &parameter) const
{
    const ConfigNode *user = m_users[std::size_t(row)].GetNode();
    ConfigNode *found = user ? user->GetSubObject(parameter) : nullptr;
    return dynamic_cast<Nodes::templateArgument *>(found);
}

QString InstanceModel::pathOf(int row, int column) const
{
    const auto *found = dynamic_cast<const Nodes::templateArgument *>(
        argument(row, m_parameters[std::size_t(column - 1)]));
    const ConfigNode *node = found ? found->GetLink().GetNode() : nullptr;
    return node ? QString::fromStdString(node->GetPath()) : QString();
}

QVariant InstanceModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    if (index.column() == 0) {
        const ConfigNode *user = m_users[std::size_t(index.row())].GetNode();
        if (user && role == Qt::DecorationRole)
            return KindIcons::of(user->GetNodeType());
        if (!user || (role != Qt::DisplayRole && role != Qt::ToolTipRole && role != SortRole))
            return {};
        return QString::fromStdString(role == Qt::ToolTipRole ? user->GetPath() : user->GetName());
    }
    const QString path = pathOf(index.row(), index.column());
    switch (role) {
    case Qt::DisplayRole:
    case SortRole:
        return path.isEmpty() ? tr("— не задано —") : path;
    case Qt::EditRole:
        return path;
    case Qt::ToolTipRole:
        return path.isEmpty() ? tr("Элементы экземпляра покажут недостоверное значение.") : path;
    case Qt::ForegroundRole:
        return path.isEmpty() ? QBrush(QColor(120, 72, 0)) : QVariant();
    default:
        return {};
    }
}

QVariant InstanceModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section >= columnCount())
        return {};
    return section == 0 ? tr("Экземпляр")
                        : QString::fromStdString(m_parameters[std::size_t(section - 1)]);
}

Qt::ItemFlags InstanceModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    return index.isValid() && index.column() > 0 ? usual | Qt::ItemIsEditable : usual;
}

bool InstanceModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const ConfigNode *source = m_source.GetNode();
    if (!index.isValid() || index.column() == 0 || role != Qt::EditRole || !source)
        return false;
    const std::string path = value.toString().trimmed().toStdString();
    const std::vector<ConfigNode *> found = source->GetNodesCollection()->GetNodesByPath(path);
    if (!path.empty() && found.empty())
        return false;
    const NodeLink target = path.empty() ? NodeLink() : NodeLink(found.front());
    const std::string &parameter = m_parameters[std::size_t(index.column() - 1)];
    bool isDone = false;
    if (const ConfigNode *there = argument(index.row(), parameter))
        isDone = m_push(new Utils::ChangePropertyCommand(
            NodeLink(there), Nodes::templateArgument::Prop::Node, target));
    else
        isDone = m_push(new Utils::AddNodeLinkCommand(argumentRecipe(parameter)
                                                          .set(QStringLiteral("node"), target)
                                                          .make(*source->GetNodesCollection()),
                                                      m_users[std::size_t(index.row())]));
    if (isDone)
        emit dataChanged(index, index);
    return isDone;
}

} // namespace Editor
