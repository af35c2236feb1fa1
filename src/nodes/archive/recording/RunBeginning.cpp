#include "nodes/archive/recording/RunBeginning.h"

#include "nodes/archive/history/StoredHistory.h"
#include "nodes/archive/recording/PacketSender.h"
#include "nodes/archive/recording/SignalIntake.h"

#include <utility>

namespace Nodes {

namespace {

constexpr std::size_t mostTaken = 1000000; // times of an earlier run that are minded, 8 MB

} // namespace

RunBeginning::RunBeginning(const RecordHome &home, Timestamp begin, const StoredHistory &stored,
                           OutageMarks::Finder find)
    : m_begin(begin),
      m_stored(stored),
      m_marks(std::make_unique<OutageMarks>(home, begin, stored, std::move(find)))
{
}

bool RunBeginning::Mark(const Recorder &recorder, PacketSender &sender, Patience patience)
{
    if (!m_marks)
        return sendPackets(sender);
    if (!recorder.IsStoreOpen() || recorder.GetHealth().aside > 0)
        return false;
    bool isDone = false;
    do {
        if (!m_marks->Step(m_packets, isDone))
            return false;
    } while (!isDone && patience == Patience::End);
    if (!isDone)
        return false;
    m_overlaps = m_marks->TakeOverlaps();
    m_marks.reset();
    return sendPackets(sender);
}

/// What finds no room is sent again.
bool RunBeginning::sendPackets(PacketSender &sender)
{
    while (!m_packets.empty() && sender.Send(m_packets.back())) {
        for (const SamplePacket::Part &part : m_packets.back().parts)
            m_marked.push_back(part.signal);
        m_packets.pop_back();
    }
    return m_packets.empty();
}

void RunBeginning::MindOverlap(SignalIntake &signal)
{
    const auto found = m_overlaps.find(signal.GetKey());
    if (found == m_overlaps.end())
        return;
    std::vector<Timestamp> times;
    const std::atomic<bool> isCancelled{false};
    const Result visited = m_stored.Visit(
        signal.GetKey(), m_begin, found->second,
        [&times](const SampleRun &run) {
            times.insert(times.end(), run.times.begin(), run.times.end());
            return times.size() < mostTaken;
        },
        isCancelled);
    if (!visited)
        return;
    signal.SetTaken(std::move(times));
    m_overlaps.erase(found);
}

void RunBeginning::ForgetAnswers()
{
    for (const ArchiveSignalKey &signal : std::exchange(m_marked, {}))
        m_stored.Forget(signal);
}

} // namespace Nodes
