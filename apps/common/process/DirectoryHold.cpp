#include "apps/common/process/DirectoryHold.h"

#include "apps/common/process/ProcessLock.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <thread>

#include <unistd.h>

namespace Host {

namespace {

constexpr std::chrono::seconds lookPeriod(1);
constexpr std::int64_t patience = 3000; // ms

/// Steady, ms; never 0.
std::int64_t now()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
               .count() +
           1;
}

} // namespace

struct DirectoryHold::Watch
{
    explicit Watch(std::string directory) : path(std::move(directory)) {}

    void look()
    {
        began = now();
        Nodes::Result held;
        if (!lock.isStillThere()) {
            std::error_code ignored;
            std::filesystem::create_directories(path, ignored);
            held = lock.take(path);
        } else if (::access(path.c_str(), W_OK) != 0) {
            held = Nodes::Result(Nodes::Result::StorageError,
                                 "cannot be written: " + std::string(std::strerror(errno)));
        }
        began = 0;
        const std::lock_guard guard(mutex);
        trouble = held ? std::string() : held.GetDetail();
    }

    static void run(const std::shared_ptr<Watch> &watch)
    {
        std::unique_lock guard(watch->mutex);
        while (!watch->isStopping) {
            guard.unlock();
            {
                const std::lock_guard disk(watch->diskMutex);
                watch->look();
            }
            guard.lock();
            watch->stopped.wait_for(guard, lookPeriod, [&] { return watch->isStopping; });
        }
    }

    const std::string path;
    std::timed_mutex diskMutex; // of the lock; held while the disk is asked
    ProcessLock lock;
    std::atomic<std::int64_t> began{0}; // when the disk was asked, 0 once it has answered
    std::mutex mutex;                   // of the rest
    std::condition_variable stopped;
    std::string trouble;
    bool isStopping = false;
};

DirectoryHold::~DirectoryHold()
{
    if (!m_watch)
        return;
    {
        const std::lock_guard guard(m_watch->mutex);
        m_watch->isStopping = true;
    }
    m_watch->stopped.notify_all();
    // A disk that hangs keeps the lock until the process is gone.
    const std::unique_lock disk(m_watch->diskMutex, std::chrono::seconds(1));
    if (disk.owns_lock())
        m_watch->lock.release();
}

Nodes::Result DirectoryHold::take(const std::string &directory)
{
    const auto watch = std::make_shared<Watch>(directory);
    const Nodes::Result taken = watch->lock.take(watch->path);
    if (!taken)
        return taken;
    m_watch = watch;
    std::thread([watch] { Watch::run(watch); }).detach();
    return taken;
}

std::string DirectoryHold::trouble() const
{
    if (!m_watch)
        return {};
    const std::int64_t began = m_watch->began;
    if (began != 0 && now() - began > patience)
        return "does not answer for " + std::to_string((now() - began) / 1000) + " s";
    const std::lock_guard guard(m_watch->mutex);
    return m_watch->trouble;
}

} // namespace Host
