#pragma once

#include "nodes/NodesExport.h"
#include "nodes/auth/ActingUser.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Result.h"

#include <functional>
#include <memory>
#include <string>

namespace Nodes {

struct LuaLimits;

/// One run of an operator's script.
struct ScriptJob
{
    unsigned long owner = 0; ///< node the script belongs to; it never runs twice at a time
    std::string name;        ///< stands for the text in messages
    std::string text;        ///< Lua
    NodeLinks inputs;        ///< what the script calls 1, 2, ...
    ActingUser user;         ///< whose rights it has
    int timeLimit = 5000;    ///< ms from the start of the script to its end
    std::function<void(const std::string &)> journal; ///< takes the script's messages
    std::function<void(const Result &)> done;         ///< how it ended
};

/// Runs scripts one after the other on a thread of its own, in a sandbox with limits of
/// instructions, time and memory. A script sees, besides what the sandbox offers:
///
///     read(signal)          the value; nil while it is bad or stale
///     quality(signal)       "good", "uncertain", "stale" or "bad"
///     write(signal, value)  with the rights of the job's user; a refusal ends the script
///     journal(text)         a message, at most 100 in one run
///
/// A signal is named by its path or by its number in the job. What touches the tree, and the
/// callbacks of the job, are handed to the thread of the tree, which is never waited for longer
/// than the script may run.
class NODES_EXPORT ScriptRunner
{
public:
    using Task = std::function<void()>;
    /// Has a task run on the thread of the tree later, in order. Any thread.
    using Poster = std::function<void(Task)>;

    explicit ScriptRunner(Poster poster);
    /// Ends the script that runs, forgets those that wait. Thread of the tree.
    ~ScriptRunner();
    ScriptRunner(const ScriptRunner &) = delete;
    ScriptRunner &operator=(const ScriptRunner &) = delete;

    static constexpr int MaximumWaiting = 64;
    static constexpr int MaximumMessages = 100; ///< of one run
    /// Of a script that may take so long, in ms.
    static LuaLimits Limits(int timeLimit);

    /// Duplicate while a script of the same owner waits or runs, LimitExceeded when too many wait.
    [[nodiscard]] Result Run(ScriptJob job);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Nodes
