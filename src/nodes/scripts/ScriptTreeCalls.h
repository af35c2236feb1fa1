#pragma once

#include "nodes/scripts/ScriptRunner.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace Nodes {

/// How a script's thread has something done on the thread of the tree and waits for it, without
/// ever holding up a tree thread that wants the script to end.
class ScriptTreeCalls
{
public:
    explicit ScriptTreeCalls(ScriptRunner::Poster poster) : m_poster(std::move(poster)) {}

    /// Calls made from now on fail after that time.
    void SetDeadline(int milliseconds);
    /// Runs `task` on the thread of the tree. Timeout once the deadline has passed and Cancelled
    /// after Cancel: the task is then not run, also not later.
    [[nodiscard]] Result Call(const ScriptRunner::Task &task);
    /// Does not wait and is not bound to the deadline.
    void Post(ScriptRunner::Task task) const { m_poster(std::move(task)); }
    /// Ends the call that waits and refuses further ones. Any thread.
    void Cancel();

private:
    struct State
    {
        std::mutex mutex;
        std::condition_variable changed;
        bool isCancelled = false;
    };
    enum class Phase { Waiting, Running, Done, Abandoned };

    ScriptRunner::Poster m_poster;
    std::chrono::steady_clock::time_point m_deadline;
    std::shared_ptr<State> m_state = std::make_shared<State>(); // tasks may outlive this object
};

} // namespace Nodes
