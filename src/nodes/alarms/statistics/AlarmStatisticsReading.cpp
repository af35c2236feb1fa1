#include "nodes/alarms/statistics/AlarmStatisticsReading.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/journal/JournalReader.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr std::size_t page = 5000;

} // namespace

void AlarmStatisticsReading::Take(const systemAlarming &alarming)
{
    active = alarming.GetActiveAlarms();
    floods.above = alarming.GetFloodBegin();
    floods.below = std::min(alarming.GetFloodEnd(), floods.above);
}

Result AlarmStatisticsReading::Read(JournalReader &journal, const std::atomic<bool> &isCancelled,
                                    AlarmFigures &figures) const
{
    if (begin <= 0 || end <= begin)
        return Result(Result::InvalidArgument, "an empty period");
    const Timestamp from = std::max<Timestamp>(begin - prelude, 1);
    Timestamp first = 0;
    if (const Result result = findBeginning(journal, from, first); !result)
        return result;
    const Timestamp counted = first > begin && first < end ? first : begin;
    AlarmStatistics statistics({counted, end, from, fleeting, standing, floods, shifts});
    for (const BasicEvent &alarm : active)
        statistics.Seed(alarm);
    const Result result = readEntries(journal, from, isCancelled, statistics);
    if (result)
        figures = statistics.GetFigures();
    return result;
}

// Whatever it is about: a station that had no alarm for days was there all the same.
Result AlarmStatisticsReading::findBeginning(JournalReader &journal, Timestamp from,
                                             Timestamp &first) const
{
    JournalQuery query;
    query.begin = from;
    query.end = end;
    query.limit = 1;
    std::vector<BasicEvent> entries;
    const Result result = journal.Query(query, entries);
    if (result && !entries.empty())
        first = entries.front().time;
    return result;
}

Result AlarmStatisticsReading::readEntries(JournalReader &journal, Timestamp from,
                                           const std::atomic<bool> &isCancelled,
                                           AlarmStatistics &statistics) const
{
    JournalQuery query;
    query.begin = from;
    query.end = end;
    query.types = {TypeAlarmActive, TypeAlarmReturned, TypeAlarmState, TypeAcknowledgement};
    query.nodes = alarms;
    query.limit = page;
    std::vector<BasicEvent> entries;
    do {
        if (isCancelled)
            return Result(Result::Cancelled);
        if (const Result result = journal.Query(query, entries); !result)
            return result;
        for (const BasicEvent &entry : entries)
            statistics.Add(entry);
        if (entries.empty())
            break;
        query.after = JournalKey::Of(entries.back());
        if (onProgress)
            onProgress(double(entries.back().time - from) / double(end - from));
    } while (entries.size() == page);
    return Result();
}

} // namespace Nodes
