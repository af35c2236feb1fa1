#include "nodes/project/ProjectHold.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstring>
#include <mutex>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Nodes {

namespace {

constexpr mode_t fileRights = 0644;

Result failure(const std::string &file, const char *step)
{
    return {Result::StorageError, file + ": " + step + ": " + std::strerror(errno)};
}

std::int64_t milliseconds(const timespec &time)
{
    return std::int64_t(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}

/// 0, or the error.
int lock(int descriptor)
{
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EINTR)
            return errno;
    }
    return 0;
}

std::string textIn(int descriptor)
{
    std::array<char, 1024> text{};
    const ssize_t size = ::pread(descriptor, text.data(), text.size(), 0);
    return {text.data(), size > 0 ? std::size_t(size) : 0};
}

/// How long ago the file was renewed, by the clock of the disk it is on, ms.
std::int64_t renewedAgo(int descriptor)
{
    struct stat before = {}, now = {};
    const bool isKnown = ::fstat(descriptor, &before) == 0 &&
                         ::futimens(descriptor, nullptr) == 0 && ::fstat(descriptor, &now) == 0;
    if (!isKnown)
        return 0;
    // It is still the other's: asking must not make it look alive.
    const std::array times{before.st_atim, before.st_mtim};
    (void)::futimens(descriptor, times.data());
    return milliseconds(now.st_mtim) - milliseconds(before.st_mtim);
}

bool isAlive(long process)
{
    return process > 0 && (::kill(pid_t(process), 0) == 0 || errno == EPERM);
}

} // namespace

struct ProjectHold::State
{
    explicit State(std::string path) : file(std::move(path)) {}
    ~State()
    {
        if (descriptor >= 0)
            ::close(descriptor);
    }
    State(const State &) = delete;
    State &operator=(const State &) = delete;

    bool isStillThere() const
    {
        struct stat held = {}, found = {};
        return ::fstat(descriptor, &held) == 0 && ::stat(file.c_str(), &found) == 0 &&
               held.st_dev == found.st_dev && held.st_ino == found.st_ino;
    }
    bool isMine() const
    {
        return isStillThere() && ProjectHolder::FromText(textIn(descriptor)).isSameProcess(me);
    }
    bool sign()
    {
        const std::string text = me.ToText();
        return ::ftruncate(descriptor, 0) == 0 &&
               ::pwrite(descriptor, text.data(), text.size(), 0) == ssize_t(text.size());
    }
    static void run(const std::shared_ptr<State> &state, std::chrono::milliseconds beat)
    {
        std::unique_lock guard(state->mutex);
        while (!state->stopped.wait_for(guard, beat, [&] { return state->isStopping; })) {
            guard.unlock();
            const bool isMine = state->isMine();
            if (isMine)
                (void)::futimens(state->descriptor, nullptr);
            state->isLost = !isMine;
            guard.lock();
        }
    }

    const std::string file;
    const ProjectHolder me = ProjectHolder::Myself();
    int descriptor = -1;
    bool isLocked = false; // by the kernel; some file systems cannot
    std::atomic<bool> isLost{false};
    std::mutex mutex;
    std::condition_variable stopped;
    bool isStopping = false;
};

ProjectHold::~ProjectHold()
{
    Release();
}

bool ProjectHold::IsLost() const
{
    return m_state && m_state->isLost;
}

void ProjectHold::Release()
{
    if (!m_state)
        return;
    {
        const std::lock_guard guard(m_state->mutex);
        m_state->isStopping = true;
    }
    m_state->stopped.notify_all();
    if (m_state->isMine())
        ::unlink(m_state->file.c_str());
    // At once, whoever else has the descriptor: a thread that waits for the disk, a child.
    (void)::flock(m_state->descriptor, LOCK_UN);
    m_state.reset();
}

// The kernel knows of this machine; of others only what the file tells, and when.
bool ProjectHold::isHeldElsewhere(const State &state, const ProjectHolder &found)
{
    if (found.host.empty() || found.isSameProcess(state.me))
        return false;
    if (found.host == state.me.host)
        return !state.isLocked && isAlive(found.process);
    struct stat file = {};
    (void)::fstat(state.descriptor, &file);
    return renewedAgo(state.descriptor) < StaleBeats * m_beat.count() &&
           isRenewed(std::int64_t(file.st_mtim.tv_sec) * 1000000000 + file.st_mtim.tv_nsec);
}

bool ProjectHold::isRenewed(std::int64_t time)
{
    const auto now = std::chrono::steady_clock::now();
    if (time != m_seenTime) {
        m_seenTime = time;
        m_seenSince = now;
    }
    return now - m_seenSince < StaleBeats * m_beat;
}

// The kernel is asked only when the text says so: a look must not be in the way of who takes it.
bool ProjectHold::IsHeldNearby(const std::string &projectFile)
{
    const int descriptor = ::open(FileOf(projectFile).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0)
        return false;
    const ProjectHolder found = ProjectHolder::FromText(textIn(descriptor));
    const ProjectHolder me = ProjectHolder::Myself();
    const bool isSaid =
        found.host == me.host && found.process != me.process && isAlive(found.process);
    const bool isHeld = isSaid && ::flock(descriptor, LOCK_SH | LOCK_NB) != 0;
    ::close(descriptor);
    return isHeld;
}

Result ProjectHold::Take(const std::string &projectFile)
{
    Release();
    m_holder = {};
    constexpr int attempts = 10; // the file may be removed by whoever lets go of it meanwhile
    for (int i = 0; i < attempts; ++i) {
        const auto state = std::make_shared<State>(FileOf(projectFile));
        state->descriptor =
            ::open(state->file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, fileRights);
        if (state->descriptor < 0)
            return failure(state->file, "cannot be made");
        const int error = lock(state->descriptor);
        state->isLocked = error == 0;
        const ProjectHolder found = ProjectHolder::FromText(textIn(state->descriptor));
        if (error == EWOULDBLOCK || isHeldElsewhere(*state, found)) {
            m_holder = found;
            return {Result::Refused, projectFile + " is edited by " + found.user + " on " +
                                         found.host + ", process " + std::to_string(found.process)};
        }
        if (!state->isStillThere())
            continue;
        if (!state->sign())
            return failure(state->file, "cannot be written");
        m_state = state;
        std::thread([state, beat = m_beat] { State::run(state, beat); }).detach();
        return {};
    }
    return {Result::StorageError, FileOf(projectFile) + ": goes again and again"};
}

} // namespace Nodes
