#pragma once

#include "nodes/NodesExport.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/journal/JournalQuery.h"
#include "nodes/journal/JournalRetention.h"
#include "nodes/model/services/JournalSink.h"
#include "nodes/storage/RecordSource.h"
#include "nodes/storage/StoreHealth.h"
#include "nodes/values/Connection.h"
#include "nodes/values/Result.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Nodes {

class JournalReader;
class JournalStore;
class NodesCollection;

/// Append-only event journal. Each row carries a hash over itself and its predecessor, so removal
/// or change of a row shows; what retention takes is told of and proved. Entries go the way of
/// every record, see Recorder: they never wait for a disk, and nothing is lost or stored twice. All
/// operations: any thread, except where stated.
class NODES_EXPORT EventJournal : public JournalSink
{
public:
    /// How much and how long; the defaults are those of a station.
    struct Limits
    {
        std::size_t waiting = 100000;             ///< entries in memory, 256 MiB at most
        std::chrono::milliseconds hanging{3000};  ///< a disk that takes longer is said to hang
        std::chrono::milliseconds stopping{5000}; ///< waited for a disk when closing
        std::chrono::milliseconds flushing{10000};
    };

    EventJournal();
    explicit EventJournal(const Limits &limits);
    ~EventJournal();
    EventJournal(const EventJournal &) = delete;
    EventJournal &operator=(const EventJournal &) = delete;

    /// Whose records these are from now on: entries name nodes of `project` by it, and entries read
    /// resolve to nodes of `project` if they are of that home. Null: none. Before the former
    /// project goes. GUI thread.
    void SetHome(const RecordHome &home, const NodesCollection *project);
    /// What entries about that node are found by, see JournalQuery; without a node when it is not
    /// of the home's project.
    RecordSource SourceOf(const NodeLink &node) const;

    /// How long entries are kept; for ever by default. Before Open.
    void SetRetention(const JournalRetention &retention);
    /// Opens the store of that location (JournalStores) or makes it, and starts the writer; until
    /// it can be written entries are kept in `spillFile`, by default "<location>.spill", while
    /// opening is retried. StorageError names place and cause.
    [[nodiscard]] Result Open(const std::string &location, const std::string &spillFile = {});
    /// Directories on other disks for what cannot be written beside the journal, the best one
    /// first; of this journal alone. Before Open, which takes up what an earlier run left there.
    void SetFallbacks(std::vector<std::string> directories);
    /// Writes or spills what is queued and closes; a disk that hangs is given up after a while.
    /// What could be written nowhere stays in memory: GetHealth counts it as waiting.
    void Close();
    /// True while the database itself can be written; entries are kept in any case.
    bool IsOpen() const;

    StoreHealth GetHealth() const;
    /// Spill files on other disks that hold entries. May wait for a disk.
    std::vector<std::string> GetFallbackFiles() const;

    /// Queues an entry and never waits; stamps it when it has no time. LimitExceeded, and the entry
    /// counts as lost, when too many wait already. Before Open entries wait in memory. Texts beyond
    /// 1 MiB are cut.
    Result Append(BasicEvent event) override;
    /// Returns when everything appended before has been written or spilled; StorageError when
    /// neither is possible or the disk hangs, NotAvailable before Open. Has the database tried
    /// again at once.
    Result Flush();

    /// A page of entries by their time, as far as they are in the store: see Flush. One whose
    /// source is a node of another project or station has no link, but its name.
    [[nodiscard]] Result Query(const JournalQuery &query, std::vector<BasicEvent> &events) const;
    /// For who asks again and again, on a thread of its own; null before Open. It may outlive the
    /// journal.
    std::unique_ptr<JournalReader> OpenReader() const;
    /// Recomputes the hash chain; the first row that does not fit is named in the detail.
    [[nodiscard]] Result Verify() const;

    /// Announces each entry after it was stored, on the writer's thread.
    Connection ConnectAppended(std::function<void(const BasicEvent &)> slot);

private:
    struct Shared;
    struct Impl;

    std::unique_ptr<Impl> m_impl;
};

} // namespace Nodes
