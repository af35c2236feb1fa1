#include "nodes/scripts/ScriptRunner.h"

#include "nodes/scripts/ScriptHost.h"
#include "nodes/scripts/ScriptTreeCalls.h"

#include <algorithm>
#include <deque>
#include <set>
#include <thread>

namespace Nodes {

namespace {

constexpr int instructionLimit = 5000000;
constexpr int processorLimit = 1000; // ms

} // namespace

struct ScriptRunner::Impl
{
    explicit Impl(Poster poster) : calls(std::move(poster)) {}

    void work();
    Result execute(const ScriptJob &job);

    ScriptTreeCalls calls;
    std::mutex mutex; // guards what follows
    std::condition_variable wake;
    std::deque<ScriptJob> waiting;
    std::set<unsigned long> owners; // of scripts that wait or run
    bool isStopping = false;
    std::thread thread; // started by the first job
};

LuaLimits ScriptRunner::Limits(int timeLimit)
{
    LuaLimits limits;
    limits.instructions = instructionLimit;
    limits.milliseconds = std::min(timeLimit, processorLimit);
    return limits;
}

ScriptRunner::ScriptRunner(Poster poster) : m_impl(std::make_unique<Impl>(std::move(poster))) {}

ScriptRunner::~ScriptRunner()
{
    {
        const std::lock_guard lock(m_impl->mutex);
        m_impl->isStopping = true;
        m_impl->waiting.clear();
    }
    m_impl->calls.Cancel();
    m_impl->wake.notify_all();
    if (m_impl->thread.joinable())
        m_impl->thread.join();
}

Result ScriptRunner::Run(ScriptJob job)
{
    const std::lock_guard lock(m_impl->mutex);
    if (m_impl->owners.count(job.owner))
        return Result(Result::Duplicate, job.name + " is still running");
    if (m_impl->waiting.size() >= std::size_t(MaximumWaiting))
        return Result(Result::LimitExceeded, job.name + ": too many scripts wait");
    m_impl->owners.insert(job.owner);
    m_impl->waiting.push_back(std::move(job));
    if (!m_impl->thread.joinable())
        m_impl->thread = std::thread([impl = m_impl.get()] { impl->work(); });
    m_impl->wake.notify_one();
    return Result();
}

void ScriptRunner::Impl::work()
{
    std::unique_lock lock(mutex);
    for (;;) {
        wake.wait(lock, [this] { return isStopping || !waiting.empty(); });
        if (isStopping)
            return;
        const ScriptJob job = std::move(waiting.front());
        waiting.pop_front();
        lock.unlock();
        const Result result = execute(job);
        lock.lock();
        owners.erase(job.owner);
        lock.unlock();
        calls.Post([done = job.done, result] { done(result); });
        lock.lock();
    }
}

Result ScriptRunner::Impl::execute(const ScriptJob &job)
{
    calls.SetDeadline(job.timeLimit);
    LuaSandbox sandbox(Limits(job.timeLimit));
    ScriptHost host(job, calls, sandbox);
    LuaSandbox::Script script = 0;
    // As a block, so that what is wrong with it is told as of a block; lines count as written.
    Result result = sandbox.CompileBlock(job.name, job.text, script);
    SignalValue returned;
    if (result)
        result = sandbox.Run(script, returned);
    // The sandbox turns every error of a host function into a failure of the script.
    return result || host.GetDenial() ? result : Result(Result::AccessDenied, result.GetDetail());
}

} // namespace Nodes
