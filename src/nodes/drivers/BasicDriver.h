#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/signals/WriteTarget.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Nodes {

class BasicSignal;
class KindBuilder;
class StandIn;
class ValueCell;

/// A source of live values: a device, a bus, this machine. Its signals are its descendants. Start
/// reads the configuration into plain structures on the GUI thread, then a thread of the driver's
/// own works on those and on the signals' cells only; Stop joins that thread. A driver that loses
/// its device turns its signals Bad within its time-out and recovers by itself. From its first
/// start on it takes the writes to its signals, whether it runs or says why it does not.
class NODES_EXPORT BasicDriver : public ConfigNode, public WriteTarget
{
public:
    struct Prop
    {
        static constexpr PropertyId<bool> Enabled{3001, "enabled"};
    };

    BasicDriver();
    ~BasicDriver() override;
    bool isEnabled() const { return m_isEnabled; }
    /// Whether its device answers; nothing while it does not run or has not tried yet. Any thread.
    std::optional<bool> isConnected() const;

    /// Every signal whose nearest driver this is, in tree order, its driverStatus signals among
    /// them. A driver below this one keeps its own.
    std::vector<BasicSignal *> GetSignals() const;
    /// The nearest driver above the node; null without one.
    static BasicDriver *Above(const ConfigNode &node);
    /// Adds a finding unless the nearest driver above the node is a `Driver`, which alone
    /// gives it values. `driver`: what people call it.
    template <class Driver>
    static void ValidatePlace(const ConfigNode &node, const char *driver,
                              ValidationResults &results)
    {
        if (!dynamic_cast<Driver *>(Above(node)))
            addMisplaced(node, driver, results);
    }

    /// Whether its values come from outside of this machine. Such a driver is not started while the
    /// core simulates: a stand-in publishes made-up values and takes the writes.
    virtual bool ReachesOut() const { return true; }

    /// Starts the driver's work. A disabled driver stays stopped and its signals are Bad with
    /// NotAvailable. The reason of a failure is also what the signals show.
    Result Start() override;
    /// Ends the driver's work; its signals are then Bad, so that nothing looks live.
    Result Stop() override;
    /// ReadOnly, unless the driver can write.
    Result Write(const BasicSignal &signal, const SignalValue &value) override;
    AuthPrivArray GetAvailablePrivs() const override;
    void Validate(ValidationResults &results) const override;

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;

    using Cells = std::vector<std::shared_ptr<ValueCell>>;

    /// Starts the thread. On failure nothing of the driver runs.
    [[nodiscard]] virtual Result StartWork() = 0;
    /// Joins the thread; called only after StartWork succeeded.
    virtual void StopWork() = 0;

    /// Cells of the driverStatus signals below and the driver's own: a thread publishes the link
    /// state into them.
    Cells GetStatusCells() const;
    static void PublishStatus(const Cells &cells, bool isConnected);

    /// Marks every signal Bad that lives by this driver; those of this process stay as they are.
    /// Any thread is fine for the cells it touches, but it walks the tree: GUI thread.
    void DegradeAll(const Result &reason);

private:
    /// Work of its own, or that of the stand-in.
    Result startWork();
    void stopWork();
    static void addMisplaced(const ConfigNode &node, const char *driver,
                             ValidationResults &results);

    /// What the signals are told to write to.
    class Target;

    bool m_isEnabled = true;
    std::unique_ptr<StandIn> m_standIn;    // while it works in place of the driver
    std::shared_ptr<ValueCell> m_link;     // link state, as a driverStatus has it
    std::shared_ptr<WriteTarget> m_target; // to this driver, as long as it lives, for its signals
};

} // namespace Nodes
