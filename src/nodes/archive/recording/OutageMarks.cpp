#include "nodes/archive/recording/OutageMarks.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/QualityOrder.h"
#include "nodes/archive/history/StoredHistory.h"
#include "nodes/archive/recording/SignalIntake.h"

#include <algorithm>
#include <chrono>

namespace Nodes {

namespace {

constexpr std::chrono::milliseconds longestStep(20);
constexpr std::size_t mostTaken = 1000000; // times of an earlier run that are minded, 8 MB
constexpr std::size_t mostMarks = 5000;    // in one packet

} // namespace

OutageMarks::OutageMarks(const RecordHome &home, Timestamp begin, const StoredHistory &stored,
                         Finder find)
    : m_home(home), m_begin(begin), m_stored(stored), m_find(std::move(find))
{
}

Result OutageMarks::Step(std::vector<SamplePacket> &marks, bool &isDone)
{
    isDone = false;
    if (!m_isListed) {
        const Result listed = m_stored.ListSignals(m_signals);
        if (!listed && listed != Result::NotFound)
            return listed;
        m_isListed = true;
    }
    const auto begun = std::chrono::steady_clock::now();
    for (; m_next < m_signals.size(); ++m_next) {
        if (std::chrono::steady_clock::now() - begun > longestStep)
            return Result();
        const ArchivedSignal &signal = m_signals[m_next];
        if (!signal.key.source.home.IsSame(m_home) || signal.last == 0)
            continue;
        const Result looked = look(signal);
        if (!looked)
            return looked;
    }
    makeMarks(marks);
    isDone = true;
    return Result();
}

Result OutageMarks::look(const ArchivedSignal &signal)
{
    const std::shared_ptr<SignalIntake> intake = m_find(signal.key);
    // What was recorded before has not ended yet: the clock was set back.
    if (signal.last >= m_begin && (!intake || signal.last > intake->LastTime())) {
        m_overlaps[signal.key] = signal.last;
        return Result();
    }
    HistoryColumnBuilder builder(m_begin, m_begin, 2);
    Result result = m_stored.Read(signal.key, m_begin, builder, m_isCancelled);
    const HistoryColumn column = builder.Take();
    if (!result || column.times.empty() || column.times.front() >= m_begin)
        return result;
    Ending ending{signal.key, column.times.front(), {}};
    // Texts are no numbers, and yet known.
    result = m_stored.Visit(
        signal.key, ending.time, ending.time,
        [&ending](const SampleRun &run) {
            if (run.KindAt(0) != SampleKind::Gap && IsKnown(run.qualities.front()))
                ending.last.Append(run, 0, 1);
            return false;
        },
        m_isCancelled);
    if (result)
        m_endings.push_back(std::move(ending));
    return result;
}

void OutageMarks::makeMarks(std::vector<SamplePacket> &marks) const
{
    Timestamp lastKnown = 0;
    for (const Ending &ending : m_endings)
        lastKnown = std::max(lastKnown, ending.time);
    for (const Ending &ending : m_endings) {
        if (ending.last.IsEmpty() || lastKnown + 1 >= m_begin)
            continue;
        SamplePacket::Part part;
        part.signal = ending.signal;
        if (lastKnown - ending.time > LongestSilence) {
            part.run = ending.last;
            part.run.times.front() = lastKnown;
        }
        part.run.AddGap(lastKnown + 1);
        if (marks.empty() || marks.back().parts.size() >= mostMarks)
            marks.emplace_back();
        marks.back().parts.push_back(std::move(part));
    }
}

} // namespace Nodes
