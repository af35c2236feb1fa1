#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace Nodes {

/// Cuts connections whose server does not answer in time: the client library waits for as long as
/// the connection stands, which is for ever when the server's machine hangs. One thread, for as
/// long as there are connections. Any thread.
class PostgresWatch
{
public:
    using Limit = std::chrono::milliseconds;

    /// The one of this process.
    static std::shared_ptr<PostgresWatch> Shared();
    ~PostgresWatch();
    PostgresWatch(const PostgresWatch &) = delete;
    PostgresWatch &operator=(const PostgresWatch &) = delete;

    /// While it lives an answer is awaited on `socket`, which is its owner's own descriptor.
    class Wait
    {
    public:
        Wait(PostgresWatch &watch, int socket, Limit limit);
        ~Wait();
        Wait(const Wait &) = delete;
        Wait &operator=(const Wait &) = delete;

    private:
        PostgresWatch &m_watch;
        const int m_socket;
    };

private:
    using Time = std::chrono::steady_clock::time_point;

    PostgresWatch();
    void run();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::map<int, Time> m_waits;
    bool m_isEnding = false;
    std::thread m_thread;
};

} // namespace Nodes
