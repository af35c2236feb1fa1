#pragma once

#include "nodes/NodesExport.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/journal/JournalQuery.h"
#include "nodes/values/Connection.h"
#include "nodes/values/Result.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Nodes {

/// Append-only event journal in an SQLite file. Each row carries a hash over itself and its
/// predecessor, so removal or change of a row shows. Entries are queued (bounded) and written by a
/// thread of its own in transactions; when the file cannot be written they go to a spill file that
/// is replayed in order, so nothing is lost and nothing is stored twice. All operations: any
/// thread.
class NODES_EXPORT EventJournal
{
public:
    EventJournal();
    ~EventJournal();
    EventJournal(const EventJournal &) = delete;
    EventJournal &operator=(const EventJournal &) = delete;

    /// Opens or creates the database and starts the writer. StorageError names file and cause;
    /// entries are then kept in the spill file beside it while opening is retried.
    [[nodiscard]] Result Open(const std::string &file);
    /// Writes what is queued and closes.
    void Close();
    /// True while the database itself can be written; entries are kept in any case.
    bool IsOpen() const;

    /// Queues an entry; stamps it when it has no time. LimitExceeded only when queue and spill
    /// file are both unavailable. Before Open entries wait in memory. Texts beyond 1 MiB are cut.
    Result Append(BasicEvent event);
    /// Returns when everything appended before has been written or spilled; StorageError when
    /// neither is possible, NotAvailable before Open. Has the database tried again at once.
    Result Flush();

    /// Entries in the order they were stored, as far as they are in the database: see Flush.
    [[nodiscard]] Result Query(const JournalQuery &query, std::vector<BasicEvent> &events) const;
    /// Recomputes the hash chain; the first row that does not fit is named in the detail.
    [[nodiscard]] Result Verify() const;

    /// Announces each entry after it was stored, on the writer's thread.
    Connection ConnectAppended(std::function<void(const BasicEvent &)> slot);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace Nodes
