#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/HistorySource.h"
#include "nodes/archive/recording/RecentSamples.h"
#include "nodes/archive/store/SamplePacket.h"
#include "nodes/values/SampleTap.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace Nodes {

class IntakeQueue;
class StoredHistory;

/// Entrance of one signal into the archive, and its history: what the store holds and, behind it,
/// what is on its way there, without a hole between them.
class NODES_EXPORT SignalIntake : public SampleTap,
                                  public HistorySource,
                                  public std::enable_shared_from_this<SignalIntake>
{
public:
    struct Settings
    {
        ArchiveSignalKey key;
        /// Change of a number below which a sample is left out, unless a later one shows that it
        /// was the last before a greater change; 0: none is. Above 0 contacts and texts that come
        /// again unchanged are left out too.
        double deadband = 0;
        bool isText = false; ///< its samples are read as texts
        RecentSamples::Limits limits;
        /// When recording began: what the signal had before counts from then on.
        Timestamp begin = 0;
    };

    SignalIntake(Settings settings, std::shared_ptr<RecentSamples::Progress> progress,
                 std::shared_ptr<IntakeQueue> queue, std::shared_ptr<const StoredHistory> stored);
    ~SignalIntake() override;

    const ArchiveSignalKey &GetKey() const { return m_settings.key; }
    void Offer(Timestamp time, const SignalValue &value) override;
    /// The last value held until now, and nothing is known of the signal from now on. No sample is
    /// offered meanwhile or afterwards.
    void End(Timestamp now);

    [[nodiscard]] Result Read(HistoryColumnBuilder &into,
                              const std::atomic<bool> &isCancelled) const override;

    // For the one who carries samples away.
    /// Samples that wait, some `most` of them, marks of what was lost among them.
    SamplePacket::Part Pack(std::size_t most, std::size_t mostTextBytes);
    bool HasMore() const { return m_recent.HasUntaken(); }
    /// The record with that key carries what was packed last; 0: it is lost, and remembered as a
    /// gap.
    void Send(std::uint64_t key);
    /// Samples lost since the last call.
    std::uint64_t TakeLost() { return m_lost.exchange(0); }
    Timestamp LastTime() const { return m_recent.Last().time; }
    /// The store holds samples of earlier runs at these times, which the clock now goes through
    /// again: later ones are placed beside them.
    void SetTaken(std::vector<Timestamp> times);

private:
    struct Archived
    {
        RecentSamples::Sample sample{0, 0, Quality::Bad, SampleKind::Gap};
        std::string text;
    };

    void add(const Archived &archived);
    bool isHeldBack(const Archived &archived) const;
    void addHeldBack();
    void noteLoss(Timestamp from, std::uint64_t count);
    Timestamp freePlace(Timestamp time);
    void readStored(HistoryColumnBuilder &into, const RecentSamples::View &view, Result &result,
                    const std::atomic<bool> &isCancelled) const;
    Result readTexts(HistoryColumnBuilder &into, Timestamp end,
                     const std::atomic<bool> &isCancelled) const;
    Timestamp placed(Timestamp time, const SignalValue &value) const;
    SampleRun readOverlap(Timestamp from, Timestamp to, const std::atomic<bool> &isCancelled) const;

    const Settings m_settings;
    const std::shared_ptr<IntakeQueue> m_queue;
    const std::shared_ptr<const StoredHistory> m_stored;
    RecentSamples m_recent;
    std::atomic<bool> m_isListed{false}; // in the queue
    std::atomic<std::uint64_t> m_lost{0};
    std::atomic<Timestamp> m_lostFrom{0}; // of the first sample lost; 0: none
    std::atomic<Timestamp> m_takenTo{0};  // last of the times below; 0: none
    // Of the thread that offers.
    Timestamp m_last = 0;
    Archived m_archived;
    std::optional<Archived> m_heldBack; // later than that, and no other
    // Of the thread that packs.
    std::vector<Timestamp> m_taken; // ascending
    std::uint64_t m_packed = 0;     // samples in the record made last
    Timestamp m_packedFrom = 0;     // the first of them
};

} // namespace Nodes
