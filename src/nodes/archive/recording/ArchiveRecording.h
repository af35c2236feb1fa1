#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/recording/ArchiveHealth.h"
#include "nodes/archive/recording/SignalIntake.h"
#include "nodes/archive/store/ArchiveRetention.h"
#include "nodes/events/EventLevel.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Nodes {

/// A run of the archive: takes the samples of the signals that are connected, carries them into the
/// store in groups, and answers what the store and the groups under way hold. Nothing waits for the
/// store: see Recorder for what becomes of samples while it is away. What was not recorded, be it
/// between two runs or because there was no room, is marked as a gap.
/// Open, Connect, Disconnect, Close: one thread.
class NODES_EXPORT ArchiveRecording
{
public:
    struct Settings
    {
        std::string location;  ///< of the store, see ArchiveStores
        std::string spillFile; ///< for samples that cannot get there
        std::vector<std::string> fallbacks;
        RecordHome home;
        /// Under which it is noted now and then that the station runs, while no sample comes.
        ArchiveSignalKey heartbeat;
        ArchiveRetentionRules retention;
        /// What a crash may lose, microseconds, besides what a transaction takes.
        Timestamp commitInterval = 250000;
        std::size_t memoryBytes = 64u << 20; ///< for samples that are not in the store
    };
    /// Tells people. On threads of the archive.
    using Teller = std::function<void(EventLevel, const std::string &)>;

    ArchiveRecording(Settings settings, Teller tell);
    ~ArchiveRecording();
    ArchiveRecording(const ArchiveRecording &) = delete;
    ArchiveRecording &operator=(const ArchiveRecording &) = delete;

    /// Starts to record. InvalidArgument when no such store can be; one that is away is tried again
    /// until it is there.
    [[nodiscard]] Result Open();
    /// Marks the end of all signals and stores what is there.
    void Close();

    struct Intake
    {
        double deadband = 0; ///< see SignalIntake
        bool isText = false;
        std::size_t samplesInMemory = 10000; ///< at least, while they are not stored
    };
    /// To be offered the signal's samples.
    std::shared_ptr<SignalIntake> Connect(const ArchiveSignalKey &key, const Intake &intake);
    /// From now on nothing is known of the signal. It is offered no samples any more.
    void Disconnect(const std::shared_ptr<SignalIntake> &signal);

    /// Returns when everything offered before is stored or spilled, see Recorder::Flush.
    [[nodiscard]] Result Flush();
    /// Any thread.
    ArchiveHealth GetHealth() const;
    std::vector<std::string> GetFallbackFiles() const;
    /// What the store holds, of whichever project. Never null; any thread.
    const std::shared_ptr<const StoredHistory> &GetStored() const;

private:
    struct Impl;

    const std::shared_ptr<Impl> m_impl;
};

} // namespace Nodes
