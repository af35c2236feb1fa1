#pragma once

#include "nodes/NodesExport.h"
#include "nodes/alarms/statistics/AlarmStatistics.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/storage/RecordSource.h"
#include "nodes/values/Result.h"

#include <atomic>
#include <functional>
#include <vector>

namespace Nodes {

class JournalReader;
class systemAlarming;

/// Makes the statistics of a period from the journal, on a thread of the caller's own.
struct NODES_EXPORT AlarmStatisticsReading
{
    Timestamp begin = 0; ///< inclusive
    Timestamp end = 0;   ///< exclusive, not after the present
    /// Of these alarms only, see EventJournal::SourceOf; empty: of all.
    std::vector<RecordSource> alarms;
    /// systemAlarming::GetActiveAlarms, taken before reading: what has been up since long before.
    std::vector<BasicEvent> active;
    Timestamp fleeting = Timestamp(10) * 1000000; ///< see AlarmStatistics::Settings
    Timestamp standing = AlarmStatistics::Day;
    FloodMeter::Limits floods;
    std::vector<AlarmShift> shifts; ///< see AlarmStatistics::Settings
    /// So far before the period entries are read to learn how it began.
    Timestamp prelude = 31 * AlarmStatistics::Day;

    /// Which alarms are up, and what the station calls a flood. GUI thread, before reading.
    void Take(const systemAlarming &alarming);

    /// Told now and then how far it is, 0 to 1; may be empty.
    std::function<void(double)> onProgress;

    /// Where the journal begins within the period, the figures begin there. Cancelled soon after
    /// `isCancelled` is set; InvalidArgument for an empty period.
    [[nodiscard]] Result Read(JournalReader &journal, const std::atomic<bool> &isCancelled,
                              AlarmFigures &figures) const;

private:
    [[nodiscard]] Result findBeginning(JournalReader &journal, Timestamp from,
                                       Timestamp &first) const;
    [[nodiscard]] Result readEntries(JournalReader &journal, Timestamp from,
                                     const std::atomic<bool> &isCancelled,
                                     AlarmStatistics &statistics) const;
};

} // namespace Nodes
