#pragma once

#include "nodes/archive/recording/RecentSamples.h"
#include "nodes/archive/store/SamplePacket.h"
#include "nodes/storage/records/Recorder.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace Nodes {

class SignalIntake;

/// Makes packets of what the signals have, hands them to the recorder, and learns which of them are
/// stored. One thread, except where stated.
class PacketSender
{
public:
    using Signals = std::vector<std::shared_ptr<SignalIntake>>;

    explicit PacketSender(std::shared_ptr<RecentSamples::Progress> progress);

    /// Before anything is sent.
    void SetRecorder(std::shared_ptr<Recorder> recorder) { m_recorder = std::move(recorder); }
    /// Everything that those signals have. True when there was something.
    bool Send(const Signals &signals);
    /// A packet of its own; false when there was no room for it.
    [[nodiscard]] bool Send(const SamplePacket &packet);

    /// For RecordHooks::onStored; any thread.
    void NoteStored(const Records &records);
    /// Samples sent so far, lost ones among them; any thread.
    std::uint64_t Samples() const { return m_samples; }

private:
    std::uint64_t append(std::string bytes);
    void sendGroup();

    const std::shared_ptr<RecentSamples::Progress> m_progress;
    std::shared_ptr<Recorder> m_recorder;
    SamplePacket m_packet; // that is being filled
    Signals m_carried;     // by it
    std::atomic<std::uint64_t> m_samples{0};
    std::mutex m_mutex; // of the keys; held while a record is appended
    std::uint64_t m_firstKey = 0;
    std::uint64_t m_lastKey = 0;
};

} // namespace Nodes
