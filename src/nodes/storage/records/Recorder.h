#pragma once

#include "nodes/NodesExport.h"
#include "nodes/storage/records/RecordFrame.h"
#include "nodes/storage/records/RecordOverflow.h"
#include "nodes/storage/records/RecordQueue.h"
#include "nodes/storage/records/RecordRescuer.h"
#include "nodes/storage/records/RecordWriter.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Nodes {

/// The whole way of one kind of records into their store: a bounded queue in front of a thread that
/// writes in transactions; while the store cannot be written records go to a spill file beside it,
/// then to one on another disk, which are replayed in order, so nothing is lost and nothing is
/// stored twice. A disk that hangs holds up nobody but that thread. Journal and archive each have
/// one. Held by a shared pointer, which threads that a disk holds keep. Any thread, except where
/// stated.
class NODES_EXPORT Recorder : public std::enable_shared_from_this<Recorder>
{
public:
    struct Limits
    {
        RecordQueue::Bounds waiting{100000, 256u << 20}; ///< in memory
        RecordPortion::Limits transaction;
        std::chrono::milliseconds hanging{3000};  ///< a disk that takes longer is said to hang
        std::chrono::milliseconds stopping{5000}; ///< waited for a disk when closing
        std::chrono::milliseconds flushing{10000};
    };

    Recorder(RecordFormat format, const Limits &limits, RecordHooks hooks);
    ~Recorder();

    /// Directories on other disks for what cannot be written beside the store, the best one first;
    /// of these records alone. Before Open, which takes up what an earlier run left there.
    void SetFallbacks(std::vector<std::string> directories);
    /// Opens the store, a distant one later, and starts writing. `spillFile` stands on the same
    /// machine, if possible on the disk of the store; missing directories are made. After a failure
    /// of the store records are kept in it while opening is retried. Refused while open. Open,
    /// Close: one thread.
    [[nodiscard]] Result Open(std::unique_ptr<RecordStore> store, const std::string &spillFile);
    /// Writes or spills what is queued and closes; a disk that hangs is given up after a while.
    void Close();
    /// Location of the store from Open to Close, else "".
    std::string GetLocation() const;
    bool IsStoreOpen() const { return m_writer.IsStoreOpen(); }

    /// Bytes of the longest one that a spill file takes.
    static constexpr std::size_t LongestRecord = RecordFrame::LongestRecord;
    /// Never waits. The record's key, by which RecordHooks::onStored tells of it; 0, and the record
    /// counts as lost, when too many wait already or it is longer than LongestRecord.
    [[nodiscard]] std::uint64_t Append(std::string bytes);
    /// Returns when everything appended before was stored or spilled; see EventJournal::Flush.
    [[nodiscard]] Result Flush();

    StoreHealth GetHealth() const;
    std::size_t Waiting() const;
    /// Spill files on other disks that hold records. May wait for a disk.
    std::vector<std::string> GetFallbackFiles() const;

private:
    const Limits m_limits;
    RecordQueue m_queue;
    RecordOverflow m_overflow;
    RecordWriter m_writer;
    RecordRescuer m_rescuer;
    mutable std::mutex m_mutex; // of the rest
    std::string m_location;
    std::vector<std::string> m_fallbacks;
};

} // namespace Nodes
