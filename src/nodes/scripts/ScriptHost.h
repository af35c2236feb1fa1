#pragma once

#include "nodes/scripts/LuaSandbox.h"
#include "nodes/scripts/ScriptRunner.h"

#include <map>

namespace Nodes {

class BasicSignal;
class ScriptTreeCalls;
class ValueCell;

/// What one run of a script may call. Used on the script's thread; reaches the tree through calls.
class ScriptHost
{
public:
    /// All outlive the host.
    ScriptHost(const ScriptJob &job, ScriptTreeCalls &calls, LuaSandbox &sandbox);

    /// The write that rights forbade; success when there was none.
    const Result &GetDenial() const { return m_denial; }

private:
    using Arguments = LuaSandbox::Arguments;

    /// A signal found once in this run; the cell can be read without the tree's thread.
    struct Found
    {
        NodeLink signal;
        std::shared_ptr<ValueCell> cell;
    };

    SignalValue read(const Arguments &arguments);
    SignalValue quality(const Arguments &arguments);
    SignalValue write(const Arguments &arguments);
    SignalValue journal(const Arguments &arguments);

    /// Null, with the reason in `error`, when the first argument names no signal.
    const Found *find(const Arguments &arguments, Result &error);
    /// Thread of the tree.
    BasicSignal *lookUp(const SignalValue &name, Result &error) const;

    const ScriptJob &m_job;
    ScriptTreeCalls &m_calls;
    std::map<std::string, Found> m_found;
    int m_messages = 0;
    Result m_denial;
};

} // namespace Nodes
