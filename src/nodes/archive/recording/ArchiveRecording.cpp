#include "nodes/archive/recording/ArchiveRecording.h"

#include "nodes/archive/history/StoredHistory.h"
#include "nodes/archive/recording/ArchiveWatch.h"
#include "nodes/archive/recording/IntakeQueue.h"
#include "nodes/archive/recording/PacketSender.h"
#include "nodes/archive/recording/RunBeginning.h"
#include "nodes/archive/store/ArchiveStore.h"
#include "nodes/storage/records/Recorder.h"
#include "nodes/timers/DeadlineThread.h"
#include "nodes/values/Clock.h"
#include "nodes/values/SignalValue.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

namespace Nodes {

namespace {

constexpr Timestamp second = 1000000;
constexpr Timestamp heartbeatPause = 5 * second;
constexpr Timestamp lookPause = second;
constexpr std::size_t manySamples = 32768; // that wait: not for the rest of the interval
// While records of an earlier run are written first, samples are held back only so long.
constexpr std::chrono::seconds longestWait(3);

Recorder::Limits limitsOf(const ArchiveRecording::Settings &settings)
{
    Recorder::Limits limits;
    limits.waiting = {100000, settings.memoryBytes};
    return limits;
}

} // namespace

struct ArchiveRecording::Impl
{
    Impl(Settings given, Teller teller);

    RecordHooks hooks();
    std::shared_ptr<SignalIntake> find(const ArchiveSignalKey &key) const;
    Timestamp work();
    void carry();
    void send();
    void beat();
    void look();
    void finish();

    const Settings settings;
    const Teller tell;
    const Timestamp begin = Clock::Current().Now();
    const std::chrono::steady_clock::time_point begun = std::chrono::steady_clock::now();
    const std::shared_ptr<RecentSamples::Progress> progress =
        std::make_shared<RecentSamples::Progress>();
    const std::shared_ptr<const StoredHistory> stored;
    const std::shared_ptr<PacketSender> sender = std::make_shared<PacketSender>(progress);
    const std::shared_ptr<Recorder> recorder;
    const std::shared_ptr<IntakeQueue> queue;
    DeadlineThread thread;
    std::atomic<std::uint64_t> lost{0};

    mutable std::mutex signalsMutex;
    std::map<ArchiveSignalKey, std::shared_ptr<SignalIntake>> signals; // guarded

    std::mutex mutex; // of the rest; held while samples are carried
    RunBeginning beginning;
    ArchiveWatch watch;
    Timestamp nextCarry = 0; // steady times
    Timestamp nextLook = 0;
    Timestamp lastSent = 0;
};

ArchiveRecording::Impl::Impl(Settings given, Teller teller)
    : settings(std::move(given)),
      tell(std::move(teller)),
      stored(std::make_shared<StoredHistory>(settings.location)),
      recorder(std::make_shared<Recorder>(SamplePacket::Format(), limitsOf(settings), hooks())),
      queue(std::make_shared<IntakeQueue>(manySamples, [this] { thread.Wake(); })),
      beginning(settings.home, begin, *stored,
                [this](const ArchiveSignalKey &key) { return find(key); }),
      watch(tell)
{
    sender->SetRecorder(recorder);
}

/// Threads that a disk holds may outlive all this.
RecordHooks ArchiveRecording::Impl::hooks()
{
    const std::weak_ptr<PacketSender> weak = sender;
    return {[weak](const Records &records, const std::vector<std::uint64_t> &) {
                if (const auto alive = weak.lock())
                    alive->NoteStored(records);
            },
            [told = tell](const RecordFinding &finding) {
                const std::string text = ArchiveWatch::TextOf(finding);
                if (!text.empty())
                    told(LevelCritical, text);
                return std::string();
            }};
}

std::shared_ptr<SignalIntake> ArchiveRecording::Impl::find(const ArchiveSignalKey &key) const
{
    const std::lock_guard lock(signalsMutex);
    const auto found = signals.find(key);
    return found == signals.end() ? nullptr : found->second;
}

Timestamp ArchiveRecording::Impl::work()
{
    const std::lock_guard lock(mutex);
    const Timestamp now = Clock::Current().Steady();
    if (now >= nextCarry || queue->AreMany()) {
        carry();
        nextCarry = now + settings.commitInterval;
    }
    if (now >= nextLook) {
        look();
        nextLook = now + lookPause;
    }
    return nextCarry;
}

void ArchiveRecording::Impl::carry()
{
    const bool isResumed = beginning.Mark(*recorder, *sender, RunBeginning::Patience::Step);
    const bool isLate = std::chrono::steady_clock::now() - begun > longestWait;
    if (isResumed || isLate || !recorder->IsStoreOpen())
        send();
}

void ArchiveRecording::Impl::send()
{
    const PacketSender::Signals waiting = queue->Take();
    for (const auto &signal : waiting)
        beginning.MindOverlap(*signal);
    if (sender->Send(waiting))
        lastSent = Clock::Current().Steady();
    else
        beat();
}

/// So that it is known later how long the station ran, although nothing changed.
void ArchiveRecording::Impl::beat()
{
    const Timestamp now = Clock::Current().Steady();
    const std::shared_ptr<SignalIntake> heartbeat = find(settings.heartbeat);
    if (!heartbeat || now - lastSent < heartbeatPause)
        return;
    heartbeat->Offer(Clock::Current().Now(), true);
    (void)sender->Send(queue->Take());
    lastSent = now;
}

void ArchiveRecording::Impl::look()
{
    {
        const std::lock_guard lock(signalsMutex);
        for (const auto &[key, signal] : signals) {
            const std::uint64_t count = signal->TakeLost();
            if (count == 0)
                continue;
            lost += count;
            watch.NoteLoss(key.source.name, count);
        }
    }
    watch.TellLosses();
    const StoreHealth health = recorder->GetHealth();
    watch.Look(health);
    if (health.waiting == 0)
        beginning.ForgetAnswers();
}

void ArchiveRecording::Impl::finish()
{
    const std::lock_guard lock(mutex);
    const Timestamp now = Clock::Current().Now();
    for (const auto &[key, signal] : signals)
        signal->End(now);
    (void)beginning.Mark(*recorder, *sender, RunBeginning::Patience::End);
    send();
    look();
}

ArchiveRecording::ArchiveRecording(Settings settings, Teller tell)
    : m_impl(std::make_shared<Impl>(std::move(settings), std::move(tell)))
{
}

ArchiveRecording::~ArchiveRecording()
{
    Close();
}

const std::shared_ptr<const StoredHistory> &ArchiveRecording::GetStored() const
{
    return m_impl->stored;
}

Result ArchiveRecording::Open()
{
    std::unique_ptr<ArchiveStore> store;
    const Result made = ArchiveStores().Make(m_impl->settings.location, store);
    if (!made)
        return made;
    store->SetRetention(m_impl->settings.retention);
    m_impl->recorder->SetFallbacks(m_impl->settings.fallbacks);
    // What is away is told of by the watch, and tried again.
    (void)m_impl->recorder->Open(std::move(store), m_impl->settings.spillFile);
    (void)Connect(m_impl->settings.heartbeat, {});
    m_impl->thread.Start([impl = m_impl.get()] { return impl->work(); });
    return Result();
}

void ArchiveRecording::Close()
{
    if (m_impl->recorder->GetLocation().empty())
        return;
    m_impl->queue->Close();
    m_impl->thread.Stop();
    m_impl->finish();
    m_impl->recorder->Close();
    const std::size_t waiting = m_impl->recorder->Waiting();
    if (waiting > 0)
        std::fprintf(stderr, "archive: %zu groups of samples could not be written and are lost\n",
                     waiting);
}

std::shared_ptr<SignalIntake> ArchiveRecording::Connect(const ArchiveSignalKey &key,
                                                        const Intake &intake)
{
    SignalIntake::Settings settings;
    settings.key = key;
    settings.deadband = intake.deadband;
    settings.isText = intake.isText;
    settings.begin = Clock::Current().Now();
    settings.limits.unstored = intake.samplesInMemory;
    settings.limits.stored = std::min(settings.limits.stored, intake.samplesInMemory);
    settings.limits.bytes = m_impl->settings.memoryBytes;
    auto signal =
        std::make_shared<SignalIntake>(settings, m_impl->progress, m_impl->queue, m_impl->stored);
    const std::lock_guard lock(m_impl->signalsMutex);
    m_impl->signals[key] = signal;
    return signal;
}

void ArchiveRecording::Disconnect(const std::shared_ptr<SignalIntake> &signal)
{
    signal->End(Clock::Current().Now());
    const std::lock_guard lock(m_impl->signalsMutex);
    m_impl->signals.erase(signal->GetKey());
    m_impl->lost += signal->TakeLost();
}

Result ArchiveRecording::Flush()
{
    {
        const std::lock_guard lock(m_impl->mutex);
        (void)m_impl->beginning.Mark(*m_impl->recorder, *m_impl->sender,
                                     RunBeginning::Patience::End);
        m_impl->send();
    }
    return m_impl->recorder->Flush();
}

ArchiveHealth ArchiveRecording::GetHealth() const
{
    return {true, m_impl->recorder->GetHealth(), m_impl->sender->Samples(), m_impl->lost};
}

std::vector<std::string> ArchiveRecording::GetFallbackFiles() const
{
    return m_impl->recorder->GetFallbackFiles();
}

} // namespace Nodes
