#pragma once

#include "nodes/archive/recording/OutageMarks.h"

#include <map>
#include <memory>
#include <vector>

namespace Nodes {

class PacketSender;
class Recorder;
class SignalIntake;
class StoredHistory;

/// What a run of the archive has to do about the runs before it: mark the outage between them, and
/// take no time twice that a clock which was set back goes through again. One thread at a time.
class RunBeginning
{
public:
    enum class Patience { Step, End };

    /// `begin`: of this run. `stored` outlives this.
    RunBeginning(const RecordHome &home, Timestamp begin, const StoredHistory &stored,
                 OutageMarks::Finder find);

    /// Marks the outage, as soon as the store holds all that was recorded before it: some
    /// milliseconds of that work, or all of it. True when it is done.
    bool Mark(const Recorder &recorder, PacketSender &sender, Patience patience);
    /// Before samples of the signal are sent.
    void MindOverlap(SignalIntake &signal);
    /// The marks are stored: answers that lack them are kept no longer.
    void ForgetAnswers();

private:
    bool sendPackets(PacketSender &sender);

    const Timestamp m_begin;
    const StoredHistory &m_stored;
    std::unique_ptr<OutageMarks> m_marks; // null when done
    std::vector<SamplePacket> m_packets;  // not sent yet
    std::vector<ArchiveSignalKey> m_marked;
    std::map<ArchiveSignalKey, Timestamp> m_overlaps; // see OutageMarks; not minded yet
};

} // namespace Nodes
