#include "nodes/drivers/BasicDriver.h"

#include "nodes/drivers/SignalSink.h"
#include "nodes/drivers/driverStatus.h"
#include "nodes/drivers/standin/StandIn.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/FindingCode.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/ValueCell.h"

namespace Nodes {

/// The driver, or who stands in for it.
class BasicDriver::Target : public WriteTarget
{
public:
    explicit Target(BasicDriver &driver) : m_driver(driver) {}
    Result Write(const BasicSignal &signal, const SignalValue &value) override
    {
        return m_driver.m_standIn ? m_driver.m_standIn->Write(signal, value)
                                  : m_driver.Write(signal, value);
    }

private:
    BasicDriver &m_driver;
};

BasicDriver::BasicDriver()
    : m_link(std::make_shared<ValueCell>()), m_target(std::make_shared<Target>(*this))
{
}

BasicDriver::~BasicDriver() = default;

std::optional<bool> BasicDriver::isConnected() const
{
    const SignalValue link = m_link->Value();
    const bool isKnown = link.GetType() == enSignalValueType::Bool && link.IsGood();
    return isKnown ? std::optional(link.ToBool()) : std::nullopt;
}

void BasicDriver::Describe(KindBuilder &builder)
{
    builder.Property<&BasicDriver::m_isEnabled>(Prop::Enabled, "Enabled", "Включён")
        .Children({NodeType::TypeFolder, NodeType::TypeSignal, NodeType::TypeDriverGroup});
}

std::vector<BasicSignal *> BasicDriver::GetSignals() const
{
    std::vector<BasicSignal *> found;
    for (const NodeLink &link : GetNodes(true)) {
        auto *signal = dynamic_cast<BasicSignal *>(link.GetNode());
        if (signal && Above(*signal) == this)
            found.push_back(signal);
    }
    return found;
}

BasicDriver *BasicDriver::Above(const ConfigNode &node)
{
    for (ConfigNode *parent = node.GetParent(); parent; parent = parent->GetParent()) {
        if (auto *driver = dynamic_cast<BasicDriver *>(parent))
            return driver;
    }
    return nullptr;
}

Result BasicDriver::Start()
{
    if (GetState() == NodeState::Running)
        return Result();
    for (BasicSignal *signal : GetSignals())
        signal->SetWriteTarget(m_target);
    if (!m_isEnabled) {
        DegradeAll(Result(this, Result::NotAvailable, GetName() + " is disabled"));
        return Result();
    }
    const Result started = startWork();
    if (started)
        return ConfigNode::Start();
    SetState(NodeState::Failed);
    DegradeAll(started);
    return started;
}

Result BasicDriver::Stop()
{
    if (GetState() == NodeState::Running) {
        stopWork();
        DegradeAll(Result(this, Result::NotAvailable, GetName() + " is stopped"));
    }
    return ConfigNode::Stop();
}

Result BasicDriver::startWork()
{
    const systemCore *core = GetCore();
    if (!core || !core->IsSimulated() || !ReachesOut())
        return StartWork();
    m_standIn = std::make_unique<StandIn>();
    m_standIn->Start(GetSignals());
    PublishStatus(GetStatusCells(), true);
    return Result();
}

void BasicDriver::stopWork()
{
    if (m_standIn)
        m_standIn.reset();
    else
        StopWork();
}

Result BasicDriver::Write(const BasicSignal &signal, const SignalValue &)
{
    return Result(&signal, Result::ReadOnly, GetName() + " only reads");
}

BasicDriver::Cells BasicDriver::GetStatusCells() const
{
    Cells cells{m_link};
    for (const BasicSignal *signal : GetSignals()) {
        if (dynamic_cast<const driverStatus *>(signal))
            cells.push_back(signal->GetCell());
    }
    return cells;
}

void BasicDriver::PublishStatus(const Cells &cells, bool isConnected)
{
    for (const auto &cell : cells)
        cell->Publish(isConnected);
}

void BasicDriver::DegradeAll(const Result &reason)
{
    m_link->Degrade(Quality::Bad, reason);
    for (const BasicSignal *signal : GetSignals()) {
        if (signal->GetOrigin() != SignalOrigin::Process)
            SignalSink(*signal).Lose(reason);
    }
}

void BasicDriver::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    if (const BasicDriver *outer = Above(*this))
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, outer->GetPath()),
                    GetName() + ": драйвер стоит внутри драйвера «" + outer->GetName() +
                        "»; перенесите его на уровень станции",
                    FindingCode::NestedDriver);
}

void BasicDriver::addMisplaced(const ConfigNode &node, const char *driver,
                               ValidationResults &results)
{
    const BasicDriver *above = Above(node);
    const std::string place =
        above ? "под чужим драйвером «" + above->GetName() + "»" : "вне драйверов";
    results.Add(node.GetNodeLink(), Result(&node, Result::InvalidArgument, node.GetPath()),
                node.GetName() + ": стоит " + place + " и не получит значений; перенесите под " +
                    driver);
}

AuthPrivArray BasicDriver::GetAvailablePrivs() const
{
    AuthPrivArray privileges = ConfigNode::GetAvailablePrivs();
    privileges.insert(privileges.end(), {PrivilegeCommand});
    return privileges;
}

} // namespace Nodes
