#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/timers/DeadlineThread.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Nodes {

class LuaSandbox;
class ValueCell;
struct LuaLimits;

/// Conditions of suppression written as Lua expressions. Each has a cell that follows it: true,
/// false, or bad while an input is bad or stale or the script fails. Until all inputs had a value
/// the cell is empty. Scripts run in a sandbox, on a thread of their own, after every change of an
/// input. Add, Start, Stop: one thread.
class NODES_EXPORT SuppressionScripts
{
public:
    struct Script
    {
        NodeLink alarm;
        std::string text;                               ///< sees its inputs as s1, s2, ...
        std::vector<std::shared_ptr<ValueCell>> inputs; ///< null: one that is gone
    };
    /// A script has failed, said once until it works again. On the scripts' thread or in Start.
    using Tell = std::function<void(const NodeLink &alarm, const std::string &error)>;

    SuppressionScripts();
    ~SuppressionScripts();

    /// Of one evaluation of a script; the memory is that of all.
    static LuaLimits Limits();

    /// Before Start; counts until Stop.
    std::shared_ptr<ValueCell> Add(Script script);
    void Start(Tell tell);
    void Stop();

private:
    struct Watched;

    Timestamp work();

    std::vector<std::unique_ptr<Watched>> m_watched;
    std::unique_ptr<LuaSandbox> m_sandbox; // the thread's, once it runs
    Tell m_tell;
    DeadlineThread m_thread;
};

} // namespace Nodes
