#include "nodes/project/AddressRule.h"

#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"

#include <map>
#include <tuple>

namespace Nodes {

namespace {

const modbusDriver *driverOf(const ConfigNode &node)
{
    for (const ConfigNode *at = node.GetParent(); at; at = at->GetParent()) {
        if (const auto *driver = dynamic_cast<const modbusDriver *>(at))
            return driver;
    }
    return nullptr;
}

std::string textOf(const ConfigNode &node, unsigned valueId)
{
    const PropertyDescriptor *d = node.GetKind()->FindProperty(valueId);
    return d ? d->binding.format(*d, node) : std::string();
}

/// Nodes of a kind in the order of the tree, each with the first one of the same key.
template <class Node, class Key>
std::vector<std::pair<const Node *, const Node *>> findRepeated(const NodesCollection &project,
                                                                bool (*keyOf)(const Node &, Key &))
{
    NodeLinks links;
    project.FindNodes(NodeType(Node::Code), &links);
    std::map<Key, const Node *> first;
    std::vector<std::pair<const Node *, const Node *>> repeated;
    for (const NodeLink &link : links) {
        const auto *node = dynamic_cast<const Node *>(link.GetNode());
        Key key;
        if (!node || !keyOf(*node, key))
            continue;
        const auto [place, isFirst] = first.emplace(std::move(key), node);
        if (!isFirst)
            repeated.emplace_back(node, place->second);
    }
    return repeated;
}

// host, port, unit
using DeviceKey = std::tuple<std::string, std::string, std::string>;

bool keyOfDevice(const modbusDriver &driver, DeviceKey &key)
{
    key = {textOf(driver, modbusDriver::Prop::Host.valueId),
           textOf(driver, modbusDriver::Prop::Port.valueId),
           textOf(driver, modbusDriver::Prop::Unit.valueId)};
    return true;
}

// driver, table, address, type, bit, byte order
using PointKey = std::tuple<const modbusDriver *, int, int, int, int, int>;

bool keyOfPoint(const modbusSignal &signal, PointKey &key)
{
    const modbusGroup *group = signal.GetGroup();
    const modbusDriver *driver = driverOf(signal);
    if (!group || !driver)
        return false;
    const ModbusPoint point = signal.GetPoint(*group);
    const int bit = point.type == ModbusType::Bit ? point.bit : 0;
    key = {driver, int(point.table), group->GetFirstAddress() + point.offset, int(point.type),
           bit,    int(point.order)};
    return true;
}

} // namespace

std::vector<ProjectFinding> FindRepeatedDevices(const NodesCollection &project)
{
    std::vector<ProjectFinding> findings;
    for (const auto &[driver, first] : findRepeated<modbusDriver, DeviceKey>(project, &keyOfDevice))
        findings.push_back(
            {driver, "то же устройство (адрес, порт и номер), что у драйвера «" + first->GetPath() +
                         "»: оно опрашивается дважды. Исправьте адрес или объедините драйверы."});
    return findings;
}

std::vector<ProjectFinding> FindRepeatedAddresses(const NodesCollection &project)
{
    std::vector<ProjectFinding> findings;
    for (const auto &[signal, first] : findRepeated<modbusSignal, PointKey>(project, &keyOfPoint)) {
        const modbusGroup *group = signal->GetGroup();
        const int address = group->GetFirstAddress() + signal->GetPoint(*group).offset;
        findings.push_back({signal, "тот же адрес " + std::to_string(address) +
                                        " той же таблицы, что у сигнала «" + first->GetPath() +
                                        "». Исправьте смещение или удалите лишний сигнал."});
    }
    return findings;
}

} // namespace Nodes
