#include "nodes/storage/postgresql/PostgresWatch.h"

#include <sys/socket.h>

namespace Nodes {

namespace {

constexpr std::chrono::milliseconds period(100);

} // namespace

std::shared_ptr<PostgresWatch> PostgresWatch::Shared()
{
    static std::mutex mutex;
    static std::weak_ptr<PostgresWatch> known;
    const std::lock_guard lock(mutex);
    std::shared_ptr<PostgresWatch> watch = known.lock();
    if (!watch) {
        watch.reset(new PostgresWatch);
        known = watch;
    }
    return watch;
}

PostgresWatch::PostgresWatch() : m_thread(&PostgresWatch::run, this) {}

PostgresWatch::~PostgresWatch()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

PostgresWatch::Wait::Wait(PostgresWatch &watch, int socket, Limit limit)
    : m_watch(watch), m_socket(socket)
{
    const std::lock_guard lock(m_watch.m_mutex);
    m_watch.m_waits[m_socket] = std::chrono::steady_clock::now() + limit;
    // Others that wait keep the thread awake already.
    if (m_watch.m_waits.size() == 1)
        m_watch.m_changed.notify_all();
}

PostgresWatch::Wait::~Wait()
{
    const std::lock_guard lock(m_watch.m_mutex);
    m_watch.m_waits.erase(m_socket);
}

void PostgresWatch::run()
{
    std::unique_lock lock(m_mutex);
    while (!m_isEnding) {
        if (m_waits.empty())
            m_changed.wait(lock, [this] { return m_isEnding || !m_waits.empty(); });
        else
            m_changed.wait_for(lock, period, [this] { return m_isEnding; });
        const Time now = std::chrono::steady_clock::now();
        for (const auto &[socket, deadline] : m_waits) {
            if (deadline <= now)
                ::shutdown(socket, SHUT_RDWR);
        }
    }
}

} // namespace Nodes
