#pragma once

#include "nodes/archive/recording/ArchiveHealth.h"
#include "nodes/archive/store/ArchiveReader.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Nodes {

class ArchiveRecording;
class BasicSignal;
class HistorySource;
struct ArchiveRetentionRules;

/// The archive of a station: where the samples of the signals go that archive sources and groups
/// name, and for how long. Runs from before the first driver starts until after the last has
/// stopped. GUI thread, except where stated.
class NODES_EXPORT systemArchiver : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x7004);
    struct Prop
    {
        static constexpr PropertyId<std::string> Location{7401, "location"};
        static constexpr PropertyId<int> Days{7402, "days"};
        static constexpr PropertyId<int> Megabytes{7403, "megabytes"};
        static constexpr PropertyId<int> Commit{7404, "commit"};
        static constexpr PropertyId<int> Memory{7405, "memory"};
    };

    systemArchiver();
    ~systemArchiver() override;
    static KindInfo Kind();

    /// Duplicate unless it is the core's archiver; NotFound for a name in the location that is not
    /// defined; InvalidArgument for a location that nobody knows how to reach. A store that is away
    /// is no failure: samples wait for it.
    Result Start() override;
    Result Stop() override;
    void Validate(ValidationResults &results) const override;

    /// Where the archive is, or is going to be; NotFound for a name that is not defined.
    [[nodiscard]] Result FindLocation(std::string &location) const;
    /// Null while not running. Any thread.
    std::shared_ptr<ArchiveRecording> GetRecording() const;
    /// By which the archive knows a signal of this project.
    ArchiveSignalKey KeyOf(const BasicSignal &signal) const;
    /// How its records are; after the stop, how they were left. Any thread.
    ArchiveHealth GetHealth() const;
    /// Spill files on other disks that hold samples. May wait for a disk.
    std::vector<std::string> GetFallbackFiles() const;

    /// What the archive holds, signals that were deleted and those of other projects among them.
    /// AccessDenied unless the current user may view this node; else as long as the store takes.
    [[nodiscard]] Result ListSignals(std::vector<ArchivedSignal> &found) const;
    /// What is stored of such a signal; to be read on another thread, also after the archiver has
    /// stopped. AccessDenied when the signal, or in place of one that is gone this node, may not be
    /// viewed.
    [[nodiscard]] Result OpenHistory(const ArchiveSignalKey &signal,
                                     std::shared_ptr<const HistorySource> &history) const;

private:
    struct Voice;

    ArchiveRetentionRules retention() const;

    std::string m_location;
    int m_days = 366;    // 0: for ever
    int m_megabytes = 0; // 0: whatever the size
    int m_commit = 250;  // ms
    int m_memory = 64;   // MB
    std::shared_ptr<Voice> m_voice;
    mutable std::mutex m_mutex;
    std::shared_ptr<ArchiveRecording> m_recording; // guarded
    ArchiveHealth m_left;                          // guarded, as the files below
    std::vector<std::string> m_leftFiles;
};

} // namespace Nodes
