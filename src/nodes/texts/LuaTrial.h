#pragma once

#include "nodes/scripts/LuaSandbox.h"
#include "nodes/texts/LuaCheck.h"

namespace Nodes {

/// One run of a text with made-up values, in a sandbox of its own: nothing of the project is read
/// or written.
class LuaTrial
{
public:
    /// `limits`: those of the station.
    LuaTrial(const std::vector<TrialInput> &inputs, LuaLimits limits);

    LuaSandbox &Sandbox() { return m_sandbox; }
    /// Value of the input of that name, empty where none is given; an error in Russian for one that
    /// there is not or that is not of its type.
    SignalValue Value(const std::string &name) const;
    /// The first `globals` inputs are globals of the script too. What it gives is converted to
    /// `type`; None takes it as it is.
    TrialOutcome Run(const std::string &text, LuaForm form, std::size_t globals,
                     enSignalValueType type);
    /// As Run, of an expression of which all inputs are globals: gives a logical value by itself.
    TrialOutcome RunCondition(const std::string &text);
    std::vector<std::string> steps; ///< taken over into the outcome

private:
    Result runScript(const std::string &text, LuaForm form, std::size_t globals,
                     SignalValue &value);

    LuaSandbox m_sandbox;
    std::vector<TrialInput> m_inputs;
};

} // namespace Nodes
