#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Runs a Lua script: see ScriptRunner for what a script may do.
class NODES_EXPORT actionExecuteScript : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1000b);
    struct Prop
    {
        static constexpr PropertyId<std::string> Script{16080, "script"};
        static constexpr PropertyId<NodeLinks> Signals{16082, "signals"};
        static constexpr PropertyId<int> TimeLimit{16081, "timeLimit"};
    };

    static KindInfo Kind();
    const std::string &GetScript() const { return m_script; }
    /// Signals the script names by number, from 1: links follow renaming and templates.
    const NodeLinks &GetSignals() const { return m_signals; }
    /// Milliseconds from start to end, waiting included.
    int GetTimeLimit() const { return m_timeLimit; }

private:
    std::string m_script;
    NodeLinks m_signals;
    int m_timeLimit = 5000;
};

} // namespace Nodes
