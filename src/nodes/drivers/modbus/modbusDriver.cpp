#include "nodes/drivers/modbus/modbusDriver.h"

#include "nodes/drivers/modbus/ModbusPoller.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/model/ConfigNodeJournal.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/NodesByPath.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/NumberText.h"

namespace Nodes {

namespace {

Result expand(const systemCore *core, const std::string &text, std::string &expanded)
{
    if (core)
        return core->Expand(text, expanded);
    expanded = text;
    return Result();
}

} // namespace

modbusDriver::modbusDriver() = default;
modbusDriver::~modbusDriver() = default;

KindInfo modbusDriver::Kind()
{
    return KindBuilder::For<modbusDriver>("modbusDriver", "Modbus TCP device",
                                          "Устройство Modbus TCP")
        .Inherit<BasicDriver>()
        .Property<&modbusDriver::m_host>(Prop::Host, "Host", "Адрес")
        .Hint("defines")
        .Property<&modbusDriver::m_port>(Prop::Port, "Port", "Порт")
        .Hint("defines")
        .Property<&modbusDriver::m_unit>(Prop::Unit, "Unit", "Номер устройства")
        .Range(0, 247)
        .Property<&modbusDriver::m_timeout>(Prop::Timeout, "Time-out, ms", "Время ожидания, мс")
        .Range(10, 60000)
        .Property<&modbusDriver::m_retries>(Prop::Retries, "Requests before loss",
                                            "Запросов до потери связи")
        .Range(1, 10)
        .Property<&modbusDriver::m_reconnectMinimum>(Prop::ReconnectMin, "Reconnect after, ms",
                                                     "Пауза переподключения от, мс")
        .Range(10, 600000)
        .Property<&modbusDriver::m_reconnectMaximum>(
            Prop::ReconnectMax, "Reconnect at most after, ms", "Пауза переподключения до, мс")
        .Range(10, 600000);
}

void modbusDriver::Validate(ValidationResults &results) const
{
    BasicDriver::Validate(results);
    if (m_reconnectMaximum < m_reconnectMinimum)
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "reconnectMax"),
                    GetName() + ": наибольшая пауза переподключения меньше наименьшей");
}

Result modbusDriver::readSettings(ModbusSettings &settings) const
{
    const systemCore *core = GetCore();
    Result expanded = expand(core, m_host, settings.host);
    if (expanded)
        expanded = expand(core, m_port, settings.port);
    if (!expanded)
        return expanded;
    const auto port = ParseInteger(settings.port);
    if (!port || *port < 1 || *port > 65535)
        return Result(this, Result::InvalidArgument,
                      GetName() + ": port '" + settings.port + "' is no number from 1 to 65535");
    settings.unit = m_unit;
    settings.timeout = m_timeout;
    settings.retries = m_retries;
    settings.reconnectMinimum = m_reconnectMinimum;
    settings.reconnectMaximum = m_reconnectMaximum;
    return Result();
}

void modbusDriver::refuse(const modbusSignal &signal, const Result &reason) const
{
    SignalSink(signal).Fail(reason);
    StoreMessage(LevelWarning, "Ошибка настройки сигнала: " + reason.GetDetail(),
                 signal.GetNodeLink());
}

PolledGroup modbusDriver::readGroup(const modbusGroup &group, std::size_t index)
{
    PolledGroup polled;
    polled.path = group.GetPath();
    polled.table = group.GetTable();
    polled.start = group.GetFirstAddress();
    polled.count = group.GetPointCount();
    polled.period = group.GetPeriod();
    polled.writesMultiple = group.writesMultiple();
    for (const NodeLink &link : group.GetNodes(true)) {
        const auto *signal = dynamic_cast<const modbusSignal *>(link.GetNode());
        if (!signal || signal->GetGroup() != &group || !signal->CheckPlace())
            continue;
        m_places[signal->GetId()] = {index, polled.points.size()};
        polled.points.push_back({signal->GetPoint(group), SignalSink(*signal)});
    }
    return polled;
}

std::vector<PolledGroup> modbusDriver::readGroups()
{
    std::vector<PolledGroup> groups;
    for (const NodeLink &link : GetNodes(true)) {
        const auto *group = dynamic_cast<const modbusGroup *>(link.GetNode());
        if (group && Above(*group) == this && group->CheckRange())
            groups.push_back(readGroup(*group, groups.size()));
    }
    for (const BasicSignal *signal : GetSignals()) {
        const auto *own = dynamic_cast<const modbusSignal *>(signal);
        if (!own || m_places.count(own->GetId()) != 0)
            continue;
        const Result place = own->CheckPlace();
        refuse(*own, place ? own->GetGroup()->CheckRange() : place);
    }
    return groups;
}

Result modbusDriver::StartWork()
{
    ModbusSettings settings;
    const Result read = readSettings(settings);
    if (!read)
        return read;
    m_places.clear();
    std::vector<PolledGroup> groups = readGroups();
    if (groups.empty())
        return Result(this, Result::InvalidArgument, GetName() + " has no group to poll");
    ModbusPoller::Listener listener;
    listener.journal = [this, own = GetPath(), nodes = NodesByPath(*this)](
                           EventLevel level, const std::string &text, const std::string &path) {
        BasicEvent event = EventAt(NodeLink(), level, text);
        event.source = path.empty() ? own : path;
        event.sourceNode = nodes.Find(event.source);
        (void)StoreEvent(*this, std::move(event));
    };
    listener.linkChanged = [cells = GetStatusCells()](bool isConnected) {
        PublishStatus(cells, isConnected);
    };
    m_poller =
        std::make_unique<ModbusPoller>(std::move(settings), std::move(groups), std::move(listener));
    m_poller->Start();
    return Result();
}

void modbusDriver::StopWork()
{
    m_poller.reset();
}

Result modbusDriver::Write(const BasicSignal &signal, const SignalValue &value)
{
    const auto found = m_places.find(signal.GetId());
    if (!m_poller || found == m_places.end())
        return Result(this, Result::NotConnected, GetName() + " does not poll " + signal.GetName());
    const Place &place = found->second;
    const PolledGroup &group = m_poller->GetGroup(place.group);
    const ModbusPoint &point = group.points[place.point].point;
    QueuedWrite write;
    const Result encoded = ModbusPoints::Encode(point, value, write.words);
    if (!encoded)
        return Result(&signal, encoded.GetType(), signal.GetName() + ": " + encoded.GetDetail());
    write.group = place.group;
    write.address = group.start + point.offset;
    write.path = signal.GetPath();
    return m_poller->QueueWrite(std::move(write));
}

} // namespace Nodes
