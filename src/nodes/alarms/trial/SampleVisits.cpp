#include "nodes/alarms/trial/SampleVisits.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/history/StoredHistory.h"
#include "nodes/archive/recording/ArchiveRecording.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

namespace {

/// What the signal had at `from`: without it a value that has not changed for long would be
/// unknown.
Result readBefore(const StoredHistory &stored, const ArchiveSignalKey &key, Timestamp from,
                  SampleRun &before, const std::atomic<bool> &isCancelled)
{
    HistoryColumnBuilder builder(from, from, 2);
    const Result result = stored.Read(key, from, builder, isCancelled);
    const HistoryColumn column = builder.Take();
    if (result && !column.times.empty() && column.times.front() < from)
        before.Add(column.times.front(), column.numbers.front(), column.qualities.front());
    return result;
}

} // namespace

Result OpenSamples(const systemArchiver &archiver, const BasicSignal &signal, SampleVisit &visit)
{
    const ArchiveSignalKey key = archiver.KeyOf(signal);
    std::shared_ptr<const HistorySource> allowed; // checks the right to view
    if (const Result result = archiver.OpenHistory(key, allowed); !result)
        return result;
    const std::shared_ptr<ArchiveRecording> recording = archiver.GetRecording();
    if (!recording)
        return Result(Result::NotAvailable, "the archive is not running");
    visit = [key, stored = recording->GetStored()](
                Timestamp from, Timestamp to, const std::function<bool(const SampleRun &)> &visitor,
                const std::atomic<bool> &isCancelled) {
        SampleRun before;
        if (const Result read = readBefore(*stored, key, from, before, isCancelled); !read)
            return read;
        if (!before.IsEmpty() && !visitor(before))
            return Result();
        return stored->Visit(key, from, to, visitor, isCancelled);
    };
    return Result();
}

SignalValue ValueOf(const SampleRun &run, std::size_t index)
{
    SignalValue value;
    switch (run.KindAt(index)) {
    case SampleKind::Gap:
        value = SignalValue(Result(Result::NotAvailable));
        break;
    case SampleKind::Number:
        value = SignalValue(run.numbers[index]);
        break;
    case SampleKind::Logical:
        value = SignalValue(run.numbers[index] != 0);
        break;
    case SampleKind::Text:
        value = SignalValue(run.TextAt(index));
        break;
    }
    value.SetQuality(run.qualities[index]);
    value.SetTimes(run.times[index], run.times[index]);
    return value;
}

} // namespace Nodes
