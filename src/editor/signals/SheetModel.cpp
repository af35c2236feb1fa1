#include "editor/signals/SheetModel.h"

#include "editor/project/ProjectSession.h"
#include "editor/signals/SheetCommand.h"
#include "editor/workspace/Workspace.h"

#include "nodes/archive/systemArchiver.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/project/signals/CellText.h"
#include "nodes/project/signals/NodePaths.h"
#include "nodes/values/FoldCase.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/ChangeTextCommand.h"

#include <QBrush>
#include <QColor>
#include <QPalette>
#include <QUndoCommand>

namespace Editor {

using Nodes::NodeType;
using Nodes::SheetColumn;
using Nodes::SheetColumns;
using Utils::ChangeTextCommand;

namespace {

constexpr QRgb kindText = 0xff5a5a5a; // 6.9:1 on white

QString toText(const std::string &text)
{
    return QString::fromStdString(text);
}

bool isBelow(const Nodes::ConfigNode *node, const Nodes::ConfigNode *scope)
{
    while (node && node != scope)
        node = node->GetParent();
    return node != nullptr;
}

QStringList choicesOf(const Nodes::PropertyDescriptor &descriptor)
{
    if (descriptor.binding.type == Nodes::PropertyType::Bool)
        return {QStringLiteral("да"), QStringLiteral("нет")};
    QStringList names;
    for (const Nodes::PropertyChoice &choice : descriptor.choices)
        names << toText(choice.nameRu);
    return names;
}

QStringList settingChoices(const std::vector<std::string> &choices)
{
    QStringList names;
    for (const std::string &choice : choices)
        names << toText(choice);
    return names;
}

} // namespace

SheetModel::SheetModel(Workspace &workspace, const Nodes::NodeLink &scope, unsigned family,
                       QObject *parent)
    : QAbstractTableModel(parent), m_workspace(workspace), m_scope(scope), m_family(family)
{
    rebuild();
    watch();
}

SheetModel::~SheetModel() = default;

void SheetModel::watch()
{
    if (Nodes::NodesCollection *project = m_scope.GetNodesCollection())
        m_connection =
            project->ConnectChanged([this](const Nodes::NodeChange &change) { follow(change); });
}

void SheetModel::follow(const Nodes::NodeChange &change)
{
    using Nodes::NodeChange;
    const Nodes::ConfigNode *node = change.node.GetNode();
    if (change.what == NodeChange::ChildAdded || change.what == NodeChange::ChildRemoved ||
        change.what == NodeChange::ChildMoved) {
        if (!scope() || isBelow(node, scope()))
            rebuildLater();
        else
            forgetArchive(node);
        return;
    }
    const int row = rowOf(change.node);
    if (row >= 0) {
        emit dataChanged(index(row, 0), index(row, columnCount() - 1));
    } else if (!m_rows.empty() && node && !node->Children().empty() && isBelow(node, scope())) {
        // Paths lead through it, or addresses are counted from it.
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    } else {
        forgetArchive(node);
    }
}

void SheetModel::forgetArchive(const Nodes::ConfigNode *changed)
{
    const bool isArchive = dynamic_cast<const Nodes::systemArchiver *>(changed) ||
                           (changed && changed->GetNodeType().GetFamily() == NodeType::TypeArchive);
    if (!isArchive)
        return;
    m_settings.Forget();
    if (!m_rows.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

// A paste adds thousands: they are looked through once.
void SheetModel::rebuildLater()
{
    if (m_isStale)
        return;
    m_isStale = true;
    QMetaObject::invokeMethod(this, &SheetModel::rebuild, Qt::QueuedConnection);
}

void SheetModel::rebuild()
{
    beginResetModel();
    m_isStale = false;
    m_settings.Forget();
    m_nodes.clear();
    if (const Nodes::ConfigNode *top = scope()) {
        m_kinds = Nodes::FindSheetKinds(*top, m_family);
        m_columns = SheetColumns(m_kinds);
        Nodes::SheetSettings::AddTo(m_columns, *top, m_family);
        for (const Nodes::NodeLink &link : top->GetNodes(true)) {
            if (Nodes::IsSheetRow(*link.GetNode(), m_family))
                m_nodes.push_back(link);
        }
    }
    applyFilter();
    endResetModel();
}

void SheetModel::setFilter(const QString &text)
{
    beginResetModel();
    m_filter = text;
    applyFilter();
    endResetModel();
}

void SheetModel::applyFilter()
{
    const std::string wanted = Nodes::FoldCase(m_filter.toStdString());
    const Nodes::ConfigNode *top = scope();
    m_rows.clear();
    m_places.clear();
    for (const Nodes::NodeLink &link : m_nodes) {
        const Nodes::ConfigNode *node = link.GetNode();
        if (!node || !top)
            continue;
        if (!wanted.empty() &&
            Nodes::FoldCase(SheetColumns::PathFrom(*top, *node)).find(wanted) ==
                std::string::npos &&
            Nodes::FoldCase(node->GetDescription()).find(wanted) == std::string::npos)
            continue;
        m_places[link.GetNodeId()] = int(m_rows.size());
        m_rows.push_back(link);
    }
}

Nodes::NodeLink SheetModel::node(int row) const
{
    return row >= 0 && row < int(m_rows.size()) ? m_rows[std::size_t(row)] : Nodes::NodeLink();
}

int SheetModel::rowOf(const Nodes::NodeLink &node) const
{
    const auto found = m_places.find(node.GetNodeId());
    return found == m_places.end() ? -1 : found->second;
}

QString SheetModel::text(int row, int column) const
{
    const Nodes::ConfigNode *top = scope();
    const Nodes::ConfigNode *shown = node(row).GetNode();
    if (!top || !shown)
        return {};
    const SheetColumn &of = m_columns[std::size_t(column)];
    return toText(of.what == SheetColumn::Setting ? m_settings.GetText(of, *shown)
                                                  : SheetColumns::GetText(of, *shown, *top));
}

int SheetModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int SheetModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_columns.GetCount());
}

QVariant SheetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    const SheetColumn &column = m_columns[std::size_t(section)];
    if (role == Qt::DisplayRole)
        return toText(column.title);
    if (role == Qt::ToolTipRole && column.descriptor)
        return tr("%1 (%2)").arg(toText(column.title), toText(column.descriptor->key));
    return {};
}

QVariant SheetModel::toolTip(const SheetColumn &column, const Nodes::ConfigNode &node) const
{
    if (column.what == SheetColumn::Name)
        return toText(node.GetPath());
    if (Nodes::SheetSettings::IsAddress(column))
        return tr("Адрес в устройстве, с нуля: начало группы и смещение в ней");
    if (column.what == SheetColumn::Setting && !column.descriptor)
        return tr("да — сигнал архивируется сам, название — вместе с группой архива");
    if (column.what == SheetColumn::Setting)
        return tr("Значение отсюда заводит сигналу собственную запись в архиве");
    const Nodes::PropertyDescriptor *own = SheetColumns::DescriptorFor(column, node);
    const QString admissible = own ? toText(Nodes::CellText::Admissible(*own)) : QString();
    if (column.what == SheetColumn::Property && !own)
        return tr("У этого вида такого свойства нет");
    return admissible.isEmpty() ? QVariant() : tr("Допустимо: %1").arg(admissible);
}

QVariant SheetModel::data(const QModelIndex &index, int role) const
{
    const Nodes::ConfigNode *shown = node(index.row()).GetNode();
    if (!index.isValid() || !shown)
        return {};
    const SheetColumn &column = m_columns[std::size_t(index.column())];
    const Nodes::PropertyDescriptor *own = SheetColumns::DescriptorFor(column, *shown);
    switch (role) {
    case Qt::DisplayRole:
        return text(index.row(), index.column());
    case Qt::EditRole:
        return column.what == SheetColumn::Name ? toText(shown->GetName())
                                                : text(index.row(), index.column());
    case Qt::ToolTipRole:
        return toolTip(column, *shown);
    case Qt::ForegroundRole:
        if (column.what == SheetColumn::Kind)
            return QBrush(QColor(kindText)); // cannot be edited, can be read
        break;
    case Qt::BackgroundRole:
        if (column.what == SheetColumn::Property && !own)
            return QPalette().brush(QPalette::Window);
        break;
    case Qt::TextAlignmentRole:
        if (own && own->choices.empty() &&
            (own->binding.type == Nodes::PropertyType::Double ||
             own->binding.type == Nodes::PropertyType::Int))
            return int(Qt::AlignRight | Qt::AlignVCenter);
        break;
    case ChoicesRole:
        if (column.what == SheetColumn::Setting)
            return settingChoices(m_settings.GetChoices(column, *shown));
        return own ? choicesOf(*own) : QStringList();
    default:
        break;
    }
    return {};
}

Qt::ItemFlags SheetModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const Nodes::ConfigNode *shown = node(index.row()).GetNode();
    if (!index.isValid() || !shown || m_workspace.session().isReadOnly())
        return flags;
    const SheetColumn &column = m_columns[std::size_t(index.column())];
    const bool isText = column.what == SheetColumn::Name || column.what == SheetColumn::Description;
    if (isText || column.what == SheetColumn::Setting ||
        SheetColumns::DescriptorFor(column, *shown))
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool SheetModel::refuse(const QString &why)
{
    m_workspace.tell(Workspace::Error, tr("Значение не изменено: %1.").arg(why));
    return false;
}

bool SheetModel::setSetting(const SheetColumn &column, Nodes::ConfigNode &node,
                            const std::string &text)
{
    Nodes::SheetPlan plan;
    const Nodes::Result planned = m_settings.Plan(column, node, text, plan);
    m_settings.Forget();
    QUndoCommand *command = nullptr;
    if (planned)
        command =
            makeSheetCommand(plan, tr("%1: %2").arg(toText(column.title), toText(node.GetName())));
    if (planned && (!command || m_workspace.push(command)))
        return true;
    plan.Discard();
    return planned ? false : refuse(toText(planned.GetDetail()));
}

bool SheetModel::setText(Nodes::ConfigNode &node, bool isName, const std::string &text)
{
    if (text == (isName ? node.GetName() : node.GetDescription()))
        return true;
    return m_workspace.push(new ChangeTextCommand(
        node.GetNodeLink(), isName ? ChangeTextCommand::Name : ChangeTextCommand::Description,
        text));
}

bool SheetModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    Nodes::ConfigNode *changed = node(index.row()).GetNode();
    if (role != Qt::EditRole || !changed)
        return false;
    const SheetColumn &column = m_columns[std::size_t(index.column())];
    const std::string text = value.toString().toStdString();
    if (column.what == SheetColumn::Name || column.what == SheetColumn::Description)
        return setText(*changed, column.what == SheetColumn::Name, text);
    if (column.what == SheetColumn::Setting)
        return setSetting(column, *changed, text);
    const Nodes::PropertyDescriptor *own = SheetColumns::DescriptorFor(column, *changed);
    if (!own)
        return false;
    if (Nodes::CellText::Show(*own, *changed) == text)
        return true;
    boost::any parsed;
    const Nodes::NodePaths paths(changed->GetNodesCollection());
    const Nodes::Result read = Nodes::CellText::Read(*own, text, paths, parsed);
    if (!read)
        return refuse(toText(read.GetDetail()));
    return m_workspace.push(
        new Utils::ChangePropertyCommand(changed->GetNodeLink(), own->valueId, std::move(parsed)));
}

} // namespace Editor
