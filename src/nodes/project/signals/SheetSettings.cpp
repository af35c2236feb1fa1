#include "nodes/project/signals/SheetSettings.h"

#include "nodes/archive/ArchivedSignals.h"
#include "nodes/archive/archiverGroup.h"
#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/project/signals/CellText.h"
#include "nodes/project/signals/NodePaths.h"
#include "nodes/values/FoldCase.h"

#include <algorithm>

namespace Nodes {

namespace {

using Source = archiverSourceConnector;

constexpr const char *addressTitle = "Адрес";
constexpr const char *tableTitle = "Таблица";
constexpr const char *archiveTitle = "Архив";
constexpr const char *yes = "да";
constexpr const char *no = "нет";

Result invalid(std::string reason)
{
    return Result(Result::InvalidArgument, std::move(reason));
}

NodeLinks find(const ConfigNode &node, NodeType::enNodeSubtype code)
{
    NodeLinks found;
    if (const NodesCollection *project = node.GetNodesCollection())
        project->FindNodes(NodeType(code), &found);
    return found;
}

const modbusGroup *groupOf(const ConfigNode &node)
{
    const auto *signal = dynamic_cast<const modbusSignal *>(&node);
    return signal ? signal->GetGroup() : nullptr;
}

std::string addressText(const ConfigNode &node)
{
    const modbusGroup *group = groupOf(node);
    return group ? std::to_string(group->GetFirstAddress() +
                                  static_cast<const modbusSignal &>(node).GetPoint(*group).offset)
                 : "";
}

std::string tableText(const ConfigNode &node)
{
    const modbusGroup *group = groupOf(node);
    return group ? CellText::Show(*group->GetKind()->FindProperty(modbusGroup::Prop::Table.valueId),
                                  *group)
                 : "";
}

Result planAddress(ConfigNode &node, const std::string &text, SheetPlan &plan)
{
    const modbusGroup *group = groupOf(node);
    if (text.empty() || text == addressText(node))
        return Result();
    if (!group)
        return invalid("сигнал вне группы опроса, адреса у него нет; перенесите его в группу");
    int offset = 0;
    const Result read = SheetSettings::ReadAddress(text, *group, offset);
    if (read)
        plan.changes.push_back({node.GetNodeLink(), modbusSignal::Prop::Offset, offset});
    return read;
}

Result planTable(const ConfigNode &node, const std::string &text)
{
    const modbusGroup *group = groupOf(node);
    if (text.empty())
        return Result();
    if (group) {
        const PropertyDescriptor &d =
            *group->GetKind()->FindProperty(modbusGroup::Prop::Table.valueId);
        boost::any value;
        if (CellText::Read(d, text, NodePaths(nullptr), value) && CellText::Holds(d, *group, value))
            return Result();
    }
    return invalid("таблица у всей группы опроса одна; перенесите сигнал в другую группу");
}

/// The same setting of a source and of a group has different ids.
const PropertyDescriptor *ownDescriptor(const SheetColumn &column, const BasicNode &by)
{
    return by.GetKind()->FindProperty(std::string_view(column.descriptor->key));
}

bool isDirect(const archiverGroup &group, const ConfigNode &signal)
{
    const NodeLinks &scope = group.GetScope();
    return std::find(scope.begin(), scope.end(), signal.GetNodeLink()) != scope.end();
}

} // namespace

void SheetSettings::AddTo(SheetColumns &columns, const ConfigNode &scope, unsigned family)
{
    if (family != NodeType::TypeSignal)
        return;
    const auto kinds = FindSheetKinds(scope, family);
    if (std::any_of(kinds.begin(), kinds.end(), [](const KindInfo *kind) {
            return kind->type == NodeType(modbusSignal::Code);
        })) {
        columns.AddSetting(tableTitle, nullptr);
        columns.AddSetting(addressTitle, nullptr);
    }
    columns.AddSetting(archiveTitle, nullptr);
    const KindInfo *source = KindTable::Instance().Find(NodeType(Source::Code));
    for (const unsigned id : {unsigned(Source::Prop::Deadband), unsigned(Source::Prop::Days)}) {
        const PropertyDescriptor *descriptor = source ? source->FindProperty(id) : nullptr;
        if (descriptor)
            columns.AddSetting("Архив: " + descriptor->nameRu, descriptor);
    }
}

bool SheetSettings::IsAddress(const SheetColumn &column)
{
    return column.what == SheetColumn::Setting && column.title == addressTitle;
}

bool SheetSettings::IsTable(const SheetColumn &column)
{
    return column.what == SheetColumn::Setting && column.title == tableTitle;
}

Result SheetSettings::ReadAddress(const std::string &text, const modbusGroup &group, int &offset)
{
    const KindInfo *kind = group.GetKind();
    boost::any value; // as the address of a new group is read
    const bool isRead =
        kind && CellText::Read(*kind->FindProperty(modbusGroup::Prop::Start.valueId), text,
                               NodePaths(nullptr), value);
    const int *address = isRead ? boost::any_cast<int>(&value) : nullptr;
    const int first = group.GetFirstAddress();
    const int last = first + group.GetPointCount() - 1;
    if (!address || *address < first || *address > last)
        return invalid("«" + text + "» не подходит; в группе «" + group.GetName() + "» адреса от " +
                       std::to_string(first) + " до " + std::to_string(last) +
                       ": расширьте группу или возьмите другую");
    offset = *address - first;
    return Result();
}

const SheetSettings::Order *SheetSettings::orderOf(const ConfigNode &signal) const
{
    if (!m_isRead) {
        m_orders.clear();
        for (const auto &[archived, order] : FindArchivedSignals(signal)) {
            if (order.by)
                m_orders[archived->GetId()] = {order.by->GetNodeLink(),
                                               dynamic_cast<const Source *>(order.by) != nullptr};
        }
        m_isRead = true;
    }
    const auto found = m_orders.find(signal.GetId());
    return found == m_orders.end() ? nullptr : &found->second;
}

std::string SheetSettings::archiveText(const ConfigNode &signal) const
{
    const Order *order = orderOf(signal);
    return !order ? no : order->isOwn ? yes : order->by.GetLinkName();
}

std::string SheetSettings::GetText(const SheetColumn &column, const ConfigNode &node) const
{
    if (column.title == addressTitle)
        return addressText(node);
    if (column.title == tableTitle)
        return tableText(node);
    if (column.title == archiveTitle)
        return archiveText(node);
    const Order *order = orderOf(node);
    const BasicNode *by = order ? order->by.GetNode() : nullptr;
    const PropertyDescriptor *own = by ? ownDescriptor(column, *by) : nullptr;
    return own ? CellText::Show(*own, *by) : std::string();
}

std::vector<std::string> SheetSettings::GetChoices(const SheetColumn &column,
                                                   const ConfigNode &node) const
{
    if (column.title != archiveTitle)
        return {};
    std::vector<std::string> choices{no, yes};
    for (const NodeLink &group : find(node, archiverGroup::Code))
        choices.push_back(group.GetLinkName());
    return choices;
}

Result SheetSettings::Plan(const SheetColumn &column, ConfigNode &node, const std::string &text,
                           SheetPlan &plan)
{
    if (column.title == addressTitle)
        return planAddress(node, text, plan);
    if (column.title == tableTitle)
        return planTable(node, text);
    if (column.title == archiveTitle)
        return planArchive(node, text, plan);
    return planSource(column, node, text, plan);
}

Result SheetSettings::planArchive(ConfigNode &signal, const std::string &text, SheetPlan &plan)
{
    const std::string folded = FoldCase(text);
    if (text.empty() || text == archiveText(signal))
        return Result();
    if (folded == no || folded == "0" || folded == "false")
        return leaveArchive(signal, plan);
    if (folded == yes || folded == "1" || folded == "true") {
        NodeLink source;
        return makeSource(signal, plan, source);
    }
    for (const NodeLink &group : find(signal, archiverGroup::Code)) {
        if (FoldCase(group.GetLinkName()) != folded)
            continue;
        const Result left = orderOf(signal) ? leaveArchive(signal, plan) : Result();
        if (!left)
            return left;
        changeScope(group, signal, true, plan);
        m_orders[signal.GetId()] = {group, false};
        return Result();
    }
    return invalid("группы архива «" + text + "» нет; допустимо: да, нет или название группы");
}

Result SheetSettings::makeSource(ConfigNode &signal, SheetPlan &plan, NodeLink &source)
{
    const Order *order = orderOf(signal);
    if (order && order->isOwn) {
        source = order->by;
        return Result();
    }
    const NodeLinks archivers = find(signal, systemArchiver::Code);
    if (archivers.empty())
        return invalid("в проекте нет архива; создайте его: дерево проекта, станция, «Создать», "
                       "«Архив»");
    NodesCollection &project = *signal.GetNodesCollection();
    const KindInfo *kind = KindTable::Instance().Find(NodeType(Source::Code));
    std::unique_ptr<ConfigNode> made = project.CreateDetached(*kind);
    made->SetName(signal.GetName());
    Result result = made->SetProperty(Source::Prop::Signal, signal.GetNodeLink());
    // What the group said of it goes on to hold.
    const BasicNode *group = order ? order->by.GetNode() : nullptr;
    for (const PropertyDescriptor &own : kind->properties) {
        const PropertyDescriptor *of =
            group ? group->GetKind()->FindProperty(std::string_view(own.key)) : nullptr;
        if (result && of && own.key != "samples")
            result = made->SetPropertyText(own.key, of->binding.format(*of, *group));
    }
    source = made->GetNodeLink();
    if (result)
        result = project.HoldClone(made, true);
    if (!result)
        return invalid("архивирование не задано: " + result.GetResultTranslated());
    plan.additions.push_back({source, archivers.front()});
    m_orders[signal.GetId()] = {source, true};
    return result;
}

Result SheetSettings::leaveArchive(const ConfigNode &signal, SheetPlan &plan)
{
    const Order *order = orderOf(signal);
    if (!order)
        return Result();
    if (order->isOwn) {
        plan.removals.push_back(order->by);
    } else {
        const auto *group = dynamic_cast<const archiverGroup *>(order->by.GetNode());
        if (!group || !isDirect(*group, signal))
            return invalid("сигнал архивируется вместе с папкой, которую архивирует группа «" +
                           order->by.GetLinkName() + "»; измените группу");
        changeScope(order->by, signal, false, plan);
    }
    m_orders.erase(signal.GetId());
    return Result();
}

void SheetSettings::changeScope(const NodeLink &group, const ConfigNode &signal, bool isIn,
                                SheetPlan &plan)
{
    const unsigned id = archiverGroup::Prop::Scope;
    auto change = std::find_if(plan.changes.begin(), plan.changes.end(), [&](const auto &known) {
        return known.node == group && known.valueId == id;
    });
    if (change == plan.changes.end()) {
        plan.changes.push_back(
            {group, id, dynamic_cast<const archiverGroup &>(*group.GetNode()).GetScope()});
        change = std::prev(plan.changes.end());
    }
    auto &scope = *boost::any_cast<NodeLinks>(&change->value);
    const NodeLink link = signal.GetNodeLink();
    scope.erase(std::remove(scope.begin(), scope.end(), link), scope.end());
    if (isIn)
        scope.push_back(link);
}

Result SheetSettings::planSource(const SheetColumn &column, ConfigNode &signal,
                                 const std::string &text, SheetPlan &plan)
{
    if (text.empty() || text == GetText(column, signal))
        return Result();
    boost::any value;
    const NodePaths paths(signal.GetNodesCollection());
    Result read = CellText::Read(*column.descriptor, text, paths, value);
    NodeLink source;
    if (read)
        read = makeSource(signal, plan, source);
    if (!read)
        return read;
    const bool isNew = std::any_of(plan.additions.begin(), plan.additions.end(),
                                   [&source](const auto &added) { return added.clone == source; });
    if (isNew)
        return source.GetNode()->SetProperty(column.descriptor->valueId, value);
    plan.changes.push_back({source, column.descriptor->valueId, std::move(value)});
    return Result();
}

} // namespace Nodes
