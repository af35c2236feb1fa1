#include "nodes/alarms/state/AlarmStateKeeper.h"

#include "nodes/values/Clock.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>

namespace Nodes {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using SteadyTime = std::chrono::steady_clock::time_point;

/// The same moment on the clock of the station and on one that nobody sets.
struct Since
{
    static Since Now() { return {Clock::Current().Now(), std::chrono::steady_clock::now()}; }

    Timestamp wall = 0; // 0: never
    SteadyTime steady;
};

constexpr milliseconds retryPause(1000);
constexpr milliseconds writePause(50); // a flood of changes is some commits a second
constexpr seconds lookPeriod(1);       // at the file, when nothing changes
constexpr seconds hangingAfter(10);
constexpr seconds stopPatience(10);

} // namespace

struct AlarmStateKeeper::State
{
    State(std::shared_ptr<AlarmStateStore> s, Hooks h) : store(std::move(s)), hooks(std::move(h)) {}

    void Run();
    void Put(unsigned long node, StoredAlarm state);
    bool WaitForWork(std::unique_lock<std::mutex> &lock);
    Result Write();
    Result Reopen();
    void TellLacking(const std::string &setAside);
    void Finish(const Result &written);
    void Tell(std::unique_lock<std::mutex> &lock, const Result &written);

    mutable std::mutex mutex;
    std::condition_variable called;
    AlarmStateStore::Memories waiting;
    AlarmStateStore::Memories writing; // changed by the keeper's thread alone
    Since waitingSince;
    Since writingSince;
    Timestamp lastKept = 0;
    std::string trouble;
    std::optional<SteadyTime> busySince; // the store was asked then and has not answered
    SteadyTime nextWrite;
    bool isStopping = false;
    bool hasEnded = false;
    bool isAbandoned = false;                     // another keeper may write by now
    const std::shared_ptr<AlarmStateStore> store; // the thread's
    Hooks hooks;                                  // guarded; empty once nobody waits for the end
};

void AlarmStateKeeper::State::Put(unsigned long node, StoredAlarm state)
{
    const std::lock_guard lock(mutex);
    if (waiting.empty()) {
        waitingSince = Since::Now();
        called.notify_one();
    }
    waiting[node] = std::move(state);
}

/// False when nobody counts on this thread any more.
bool AlarmStateKeeper::State::WaitForWork(std::unique_lock<std::mutex> &lock)
{
    called.wait_for(lock, lookPeriod,
                    [this] { return isStopping || !waiting.empty() || !store->IsOpen(); });
    called.wait_until(lock, nextWrite, [this] { return isStopping; });
    return !isAbandoned;
}

void AlarmStateKeeper::State::Run()
{
    if (!store->IsOpen())
        TellLacking({});
    std::unique_lock lock(mutex);
    for (bool isLast = false; !isLast && WaitForWork(lock);) {
        isLast = isStopping;
        writing.swap(waiting);
        writingSince = std::exchange(waitingSince, Since());
        busySince = std::chrono::steady_clock::now();
        lock.unlock();
        const bool wasOpen = store->IsOpen();
        const Result written = Write();
        const bool isToBeOpened = wasOpen && !store->IsOpen();
        lock.lock();
        busySince.reset();
        Finish(written);
        Tell(lock, written);
        // What a store that was opened anew lacks is put by then.
        if (isToBeOpened || (written && !waiting.empty()))
            isLast = false;
    }
    lock.unlock();
    store->Close();
    lock.lock();
    hasEnded = true;
    called.notify_all();
}

Result AlarmStateKeeper::State::Write()
{
    if (store->IsOpen() && store->NoticeMove()) {
        TellLacking({});
        return Result(Result::StorageError, "the file was removed or replaced");
    }
    Result result = store->IsOpen() ? Result() : Reopen();
    return result && !writing.empty() ? store->Save(writing) : result;
}

Result AlarmStateKeeper::State::Reopen()
{
    StoreOpening opening;
    const Result opened = store->Open(opening);
    if (opened)
        TellLacking(opening.setAside);
    return opened;
}

void AlarmStateKeeper::State::TellLacking(const std::string &setAside)
{
    std::unique_lock lock(mutex);
    const auto tell = hooks.onLacking;
    lock.unlock();
    if (tell)
        tell(setAside);
}

void AlarmStateKeeper::State::Finish(const Result &written)
{
    const auto now = std::chrono::steady_clock::now();
    if (written) {
        nextWrite = now + writePause;
        if (!writing.empty())
            lastKept = Clock::Current().Now();
    } else {
        nextWrite = now + retryPause;
        waiting.insert(writing.begin(), writing.end()); // later states win over these
        waitingSince = writingSince.wall != 0 ? writingSince : waitingSince;
    }
    writing.clear();
    writingSince = Since();
}

void AlarmStateKeeper::State::Tell(std::unique_lock<std::mutex> &lock, const Result &written)
{
    const bool wasTroubled = !trouble.empty();
    trouble = written ? std::string() : written.ToString();
    if (wasTroubled != trouble.empty() || !hooks.onTrouble)
        return;
    const auto tell = hooks.onTrouble;
    const std::string text = trouble;
    lock.unlock();
    tell(text);
    lock.lock();
}

AlarmStateKeeper::AlarmStateKeeper() = default;

AlarmStateKeeper::~AlarmStateKeeper()
{
    Stop();
}

void AlarmStateKeeper::Start(std::shared_ptr<AlarmStateStore> store, Hooks hooks)
{
    Stop();
    if (!store) {
        const std::lock_guard lock(m_mutex);
        return m_state.reset();
    }
    auto state = std::make_shared<State>(std::move(store), std::move(hooks));
    {
        const std::lock_guard lock(m_mutex);
        m_state = state;
    }
    m_thread = std::thread([state = std::move(state)] { state->Run(); });
}

bool AlarmStateKeeper::Stop()
{
    if (!m_thread.joinable())
        return true;
    std::unique_lock lock(m_state->mutex);
    m_state->isStopping = true;
    m_state->called.notify_all();
    const bool hasEnded =
        m_state->called.wait_for(lock, stopPatience, [this] { return m_state->hasEnded; });
    m_state->hooks = {};
    m_state->isAbandoned = !hasEnded;
    const bool isKept = hasEnded && m_state->waiting.empty();
    lock.unlock();
    if (hasEnded)
        m_thread.join();
    else
        m_thread.detach();
    return isKept;
}

std::shared_ptr<AlarmStateKeeper::State> AlarmStateKeeper::state() const
{
    const std::lock_guard lock(m_mutex);
    return m_state;
}

void AlarmStateKeeper::Put(unsigned long node, StoredAlarm stored)
{
    if (const auto keeper = state())
        keeper->Put(node, std::move(stored));
}

void AlarmStateKeeper::Describe(AlarmHealth &health) const
{
    const auto keeper = state();
    health.isKeeping = keeper != nullptr;
    if (!keeper)
        return;
    const std::lock_guard lock(keeper->mutex);
    const auto &waiting = keeper->waiting;
    const auto overtaken =
        std::count_if(keeper->writing.begin(), keeper->writing.end(),
                      [&waiting](const auto &kept) { return waiting.count(kept.first) != 0; });
    health.unkept = waiting.size() + keeper->writing.size() - std::size_t(overtaken);
    const Since &since =
        keeper->writingSince.wall != 0 ? keeper->writingSince : keeper->waitingSince;
    health.unkeptSince = since.wall;
    if (since.wall != 0)
        health.unkeptFor = std::chrono::duration_cast<std::chrono::microseconds>(
                               std::chrono::steady_clock::now() - since.steady)
                               .count();
    health.lastKept = keeper->lastKept;
    health.trouble = keeper->trouble;
}

bool AlarmStateKeeper::IsFoundHanging()
{
    const auto keeper = state();
    if (!keeper)
        return false;
    const std::lock_guard lock(keeper->mutex);
    const bool isHanging =
        keeper->busySince && std::chrono::steady_clock::now() - *keeper->busySince > hangingAfter;
    if (!isHanging || !keeper->trouble.empty())
        return false;
    keeper->trouble = "the disk does not answer";
    return true;
}
} // namespace Nodes
