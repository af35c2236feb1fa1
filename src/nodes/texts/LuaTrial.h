#pragma once

#include "nodes/scripts/LuaSandbox.h"
#include "nodes/texts/LuaCheck.h"

namespace Nodes {

/// One run of a text with made-up values, in a sandbox of its own: nothing of the project is read
/// or written.
class LuaTrial
{
public:
    explicit LuaTrial(const std::vector<TrialInput> &inputs);

    LuaSandbox &Sandbox() { return m_sandbox; }
    /// Value of the input of that name; an error in Russian for one that there is not.
    SignalValue Value(const std::string &name) const;
    /// The inputs are globals of the script too, where `areGlobals`. What it gives is converted to
    /// `type`; None takes it as it is.
    TrialOutcome Run(const std::string &text, LuaForm form, bool areGlobals,
                     enSignalValueType type);
    std::vector<std::string> steps; ///< taken over into the outcome

private:
    LuaSandbox m_sandbox;
    std::vector<TrialInput> m_inputs;
};

} // namespace Nodes
