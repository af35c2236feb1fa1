#pragma once

#include "apps/common/history/HistoryProfiles.h"
#include "apps/common/history/SignalCurve.h"
#include "apps/common/history/Stretches.h"

#include "nodes/archive/store/ArchiveReader.h"
#include "nodes/storage/RecordSource.h"

#include <functional>
#include <vector>

namespace Nodes {
class BasicSignal;
}

namespace Host {

class ArchiveWriter;

/// Makes up a plausible past of a plant's signals: days, weather, measurement noise, steps, pumps
/// that take turns, trips, hours in which the station was off and minutes in which the device was
/// lost. The same seed gives the same past. Everything is stored as generated, and only before the
/// first sample that the archive has of a signal. One thread.
class HistoryGenerator
{
public:
    struct Wish
    {
        Nodes::Timestamp from = 0;
        Nodes::Timestamp to = 0;       ///< first moment after it
        Nodes::Timestamp interval = 0; ///< from sample to sample; 0: by the span
        std::uint64_t seed = 1;
    };
    struct Outcome
    {
        std::uint64_t samples = 0;
        std::size_t filled = 0;     ///< signals that have a past now
        std::size_t shortened = 0;  ///< of those: up to their first sample
        std::size_t passedOver = 0; ///< signals that have a past already
    };
    /// Called before each signal.
    using Progress = std::function<void(std::size_t done, std::size_t all)>;

    HistoryGenerator(ArchiveWriter &writer, Nodes::RecordHome home,
                     const HistoryProfiles &profiles);

    /// `known`: what the archive has. The outcome is that of what was done, also after a failure;
    /// whoever calls finishes the writer.
    [[nodiscard]] Nodes::Result generate(const std::vector<const Nodes::BasicSignal *> &wanted,
                                         const std::vector<Nodes::ArchivedSignal> &known,
                                         const Wish &wish, const Progress &progress,
                                         Outcome &outcome);

    /// Such that a signal gets some ten thousand samples.
    static Nodes::Timestamp intervalFor(Nodes::Timestamp span);

private:
    struct Series;

    [[nodiscard]] Nodes::Result make(const Nodes::BasicSignal &signal, const Wish &wish,
                                     Nodes::Timestamp to, std::uint64_t &samples);
    [[nodiscard]] Nodes::Result flush(Series &series);
    void add(Series &series, Nodes::Timestamp time) const;
    bool passGap(Series &series, Nodes::Timestamp time) const;

    ArchiveWriter &m_writer;
    const Nodes::RecordHome m_home;
    const HistoryProfiles &m_profiles;
    std::vector<Stretches> m_gaps; // in which nothing is known of any signal
};

} // namespace Host
