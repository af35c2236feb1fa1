#pragma once

#include "nodes/NodesExport.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/journal/JournalQuery.h"
#include "nodes/model/services/JournalSink.h"
#include "nodes/storage/StoreHealth.h"
#include "nodes/values/Connection.h"
#include "nodes/values/Result.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Nodes {

/// Append-only event journal in an SQLite file. Each row carries a hash over itself and its
/// predecessor, so removal or change of a row shows. Entries are queued (bounded) and written by a
/// thread of its own in transactions; when the file cannot be written they go to a spill file
/// beside it, then to one on another disk, which are replayed in order, so nothing is lost and
/// nothing is stored twice. A disk that hangs holds up nobody but that thread. All operations: any
/// thread, except where stated.
class NODES_EXPORT EventJournal : public JournalSink
{
public:
    /// How much and how long; the defaults are those of a station.
    struct Limits
    {
        std::size_t waiting = 100000;             ///< entries in memory
        std::chrono::milliseconds hanging{3000};  ///< a disk that takes longer is said to hang
        std::chrono::milliseconds stopping{5000}; ///< waited for a disk when closing
        std::chrono::milliseconds flushing{10000};
    };

    EventJournal();
    explicit EventJournal(const Limits &limits);
    ~EventJournal();
    EventJournal(const EventJournal &) = delete;
    EventJournal &operator=(const EventJournal &) = delete;

    /// Opens or creates the database and starts the writer. StorageError names file and cause;
    /// entries are then kept in the spill file beside it while opening is retried.
    [[nodiscard]] Result Open(const std::string &file);
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

    /// Entries in the order they were stored, as far as they are in the database: see Flush.
    [[nodiscard]] Result Query(const JournalQuery &query, std::vector<BasicEvent> &events) const;
    /// Recomputes the hash chain; the first row that does not fit is named in the detail.
    [[nodiscard]] Result Verify() const;

    /// Announces each entry after it was stored, on the writer's thread.
    Connection ConnectAppended(std::function<void(const BasicEvent &)> slot);

private:
    struct Impl;
    std::shared_ptr<Impl> m_impl; // outlives this object while a disk holds one of its threads
};

} // namespace Nodes
