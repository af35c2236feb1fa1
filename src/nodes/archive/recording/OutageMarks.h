#pragma once

#include "nodes/archive/store/ArchiveReader.h"
#include "nodes/archive/store/SamplePacket.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace Nodes {

class SignalIntake;
class StoredHistory;

/// Marks what is not known of the time before this run: each signal of this station whose samples
/// end as if it had gone on gets a gap just after the last moment at which the station is known to
/// have recorded. Signals that are recorded no more are among them. Works in steps, because a store
/// may know many signals. One thread.
class OutageMarks
{
public:
    /// A sample tells what held until the outage when it was not longer before, microseconds; of an
    /// older one that is said once more, so that a line leads there.
    static constexpr Timestamp LongestSilence = 2 * 1000000;

    /// Null when that signal is not recorded now.
    using Finder = std::function<std::shared_ptr<SignalIntake>(const ArchiveSignalKey &)>;

    /// `begin`: of this run.
    OutageMarks(const RecordHome &home, Timestamp begin, const StoredHistory &stored, Finder find);

    /// A failure leaves everything as it was, to be tried again. `isDone`: nothing is left, and
    /// `marks` is what is to be recorded.
    [[nodiscard]] Result Step(std::vector<SamplePacket> &marks, bool &isDone);

    /// Signals of which the store holds later samples than this run can have made when it began,
    /// and the last of those: the clock was set back.
    std::map<ArchiveSignalKey, Timestamp> TakeOverlaps() { return std::exchange(m_overlaps, {}); }

private:
    struct Ending
    {
        ArchiveSignalKey signal;
        Timestamp time = 0;
        SampleRun last; ///< the sample, unless it is a gap
    };

    [[nodiscard]] Result look(const ArchivedSignal &signal);
    void makeMarks(std::vector<SamplePacket> &marks) const;

    const RecordHome m_home;
    const Timestamp m_begin;
    const StoredHistory &m_stored;
    const Finder m_find;
    const std::atomic<bool> m_isCancelled{false};
    bool m_isListed = false;
    std::vector<ArchivedSignal> m_signals;
    std::size_t m_next = 0; // of them
    std::vector<Ending> m_endings;
    std::map<ArchiveSignalKey, Timestamp> m_overlaps;
};

} // namespace Nodes
