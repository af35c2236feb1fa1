#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/scripts/LuaSandbox.h"

#include <atomic>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace Nodes {

/// One simulated signal as configured.
struct SimulatedSignal
{
    NodeLink node;
    std::string path;         ///< from the project's root, parts separated by '/'
    std::string relativePath; ///< from the driver
    std::string formula;      ///< Lua; "" keeps the written value
    enSignalValueType type = enSignalValueType::Double;
    SignalValue initial; ///< `value` before the first step
};

/// Steps a set of formulas. No thread, no clock: the caller gives the time. A formula sees `t`,
/// `dt`, `value` (its own last good or written value) and `signal("name")` (another signal's
/// outcome of its last step: nil before the first; an error of that one is an error of this one,
/// unless all that fail wait for each other in a circle: these see the last good value).
/// One thread, Abort excepted.
class NODES_EXPORT SimulatorEngine
{
public:
    /// Called when a signal fails, fails differently or (success) recovers.
    using Report = std::function<void(const SimulatedSignal &, const Result &)>;

    explicit SimulatorEngine(Report report, LuaLimits limits = {});

    /// Index of the signal in the calls below. A formula that does not compile fails in every step.
    std::size_t Add(SimulatedSignal signal);
    /// The written value is `value` from the next step on.
    void Write(std::size_t index, const SignalValue &value);
    /// `time` in seconds since the start, `elapsed` since the step before. In the first step a
    /// formula that fails is repeated whenever one that it asked for has succeeded. False when the
    /// step was cut short by Abort: its outcomes are then of no use.
    bool Step(double time, double elapsed);
    /// Any thread: a step under way ends after the formula that is running, and no other begins.
    void Abort() { m_isAborted = true; }

    std::size_t GetCount() const { return m_entries.size(); }
    /// Outcome of the last step: a value of the signal's type or an error.
    const SignalValue &GetOutcome(std::size_t index) const { return m_entries[index].outcome; }

private:
    struct Entry
    {
        SimulatedSignal signal;
        Result compiled;
        LuaSandbox::Script script = 0;
        SignalValue value;   ///< last good or written
        SignalValue outcome; ///< what is shown
        std::string reported;
        std::vector<std::size_t> waiting; ///< failed in the first step for want of this one
        std::vector<std::size_t> missed;  ///< it asked for, which had no value
        SignalValue attempt;              ///< with what the others lend
        bool isLent = false;              ///< others see `value` in place of the outcome
    };

    void addName(const std::string &name, std::size_t index);
    SignalValue lookUp(const LuaSandbox::Arguments &arguments);
    void evaluate(Entry &entry, double time, double elapsed);
    SignalValue run(Entry &entry, double time, double elapsed);
    void settle(std::size_t index, double time, double elapsed);
    bool isHeldUp(const Entry &entry) const;
    void dropBlocked();
    void closeCircles(double time, double elapsed);
    void report(Entry &entry);

    Report m_report;
    LuaSandbox m_sandbox;
    std::vector<Entry> m_entries;
    std::map<std::string, std::size_t, std::less<>> m_byName;
    std::vector<std::size_t> m_missed; // looked up by the formula that runs, without a value
    std::atomic<bool> m_isAborted{false};
    bool m_isFirstStep = true;
};

} // namespace Nodes
