#pragma once

#include "nodes/NodesExport.h"
#include "nodes/scripts/LuaSandbox.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace Nodes {

/// One simulated signal as configured.
struct SimulatedSignal
{
    std::string path;         ///< from the project's root, parts separated by '/'
    std::string relativePath; ///< from the driver
    std::string formula;      ///< Lua; "" keeps the written value
    enSignalValueType type = enSignalValueType::Double;
    SignalValue initial; ///< `value` before the first step
};

/// Steps a set of formulas. No thread, no clock: the caller gives the time. A formula sees `t`,
/// `dt`, `value` (its own last good or written value) and `signal("name")` (another signal's
/// outcome of its last step: nil before the first; an error of that one is an error of this one).
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
    /// `time` in seconds since the start, `elapsed` since the step before. The first step repeats
    /// formulas that wait for others until no more of them succeed.
    void Step(double time, double elapsed);

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
    };

    void addName(const std::string &name, std::size_t index);
    SignalValue lookUp(const LuaSandbox::Arguments &arguments) const;
    void evaluate(Entry &entry, double time, double elapsed);
    SignalValue run(Entry &entry, double time, double elapsed);
    void settle(double time, double elapsed);
    void report(Entry &entry);

    Report m_report;
    LuaSandbox m_sandbox;
    std::vector<Entry> m_entries;
    std::map<std::string, std::size_t, std::less<>> m_byName;
    bool m_isFirstStep = true;
};

} // namespace Nodes
