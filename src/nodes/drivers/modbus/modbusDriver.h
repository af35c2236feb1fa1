#pragma once

#include "nodes/drivers/BasicDriver.h"
#include "nodes/model/properties/PropertyId.h"

#include <map>

namespace Nodes {

class ModbusPoller;
class SignalValue;
class modbusGroup;
class modbusSignal;
struct ModbusSettings;
struct PolledGroup;

/// A device on Modbus TCP: polls its groups, writes on demand, reconnects by itself. Signals that
/// are misconfigured are Bad and journalled; the rest works.
class NODES_EXPORT modbusDriver : public BasicDriver
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x3003);
    struct Prop : BasicDriver::Prop
    {
        static constexpr PropertyId<std::string> Host{3301, "host"};
        static constexpr PropertyId<std::string> Port{3302, "port"};
        static constexpr PropertyId<int> Unit{3303, "unit"};
        static constexpr PropertyId<int> Timeout{3304, "timeout"};
        static constexpr PropertyId<int> Retries{3305, "retries"};
        static constexpr PropertyId<int> ReconnectMin{3306, "reconnectMin"};
        static constexpr PropertyId<int> ReconnectMax{3307, "reconnectMax"};
    };

    modbusDriver();
    ~modbusDriver() override;

    static KindInfo Kind();

    /// Queues a checked value; see ModbusPoller::QueueWrite and ModbusPoints::Encode for refusals.
    /// GUI thread, never waits.
    Result Write(const BasicSignal &signal, const SignalValue &value) override;

    void Validate(ValidationResults &results) const override;

protected:
    Result StartWork() override;
    void StopWork() override;

private:
    /// Where a signal is polled.
    struct Place
    {
        std::size_t group;
        std::size_t point;
    };

    [[nodiscard]] Result readSettings(ModbusSettings &settings) const;
    std::vector<PolledGroup> readGroups();
    PolledGroup readGroup(const modbusGroup &group, std::size_t index);
    void refuse(const modbusSignal &signal, const Result &reason) const;

    std::string m_host = "127.0.0.1";
    std::string m_port = "502";
    int m_unit = 1;
    int m_timeout = 1000;
    int m_retries = 2;
    int m_reconnectMinimum = 500;
    int m_reconnectMaximum = 30000;
    std::map<unsigned long, Place> m_places; // by node id
    std::unique_ptr<ModbusPoller> m_poller;
};

} // namespace Nodes
