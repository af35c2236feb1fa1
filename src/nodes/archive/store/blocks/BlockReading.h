#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/store/ArchiveBucket.h"
#include "nodes/archive/store/SampleRun.h"
#include "nodes/archive/store/blocks/ArchiveRows.h"
#include "nodes/archive/store/blocks/LogTails.h"
#include "nodes/archive/store/codec/Pyramid.h"

#include <atomic>
#include <vector>

namespace Nodes {

class HistoryColumnBuilder;

/// Answers questions about the samples of a signal from the tables of an archive, whatever database
/// they are in. Where a chunk cannot be read there is a gap. One thread, each call within a
/// transaction of reading.
class NODES_EXPORT BlockReading
{
public:
    explicit BlockReading(ArchiveRows &rows) : m_rows(rows), m_tails(rows) {}

    /// The tables may be others.
    void Forget();
    /// As ArchiveReader::Read.
    [[nodiscard]] Result Read(const StoredSignal &signal, HistoryColumnBuilder &into,
                              const std::atomic<bool> &isCancelled);
    /// The next samples of [from, to], a chunk's at most; none: there are no more. A chunk that
    /// cannot be read is a gap, and counted in `damaged`.
    [[nodiscard]] Result ReadNext(const StoredSignal &signal, Timestamp from, Timestamp to,
                                  SampleRun &run, std::size_t &damaged);
    /// As ArchiveReader::ReadBuckets.
    [[nodiscard]] Result ReadBuckets(const StoredSignal &signal, Timestamp from, Timestamp to,
                                     std::size_t count, std::vector<ArchiveBucket> &buckets,
                                     const std::atomic<bool> &isCancelled);
    /// First and last time, number and bytes of all that there is.
    [[nodiscard]] Result Sum(const StoredSignal &signal, StoredBlock &sum);

private:
    [[nodiscard]] Result addBefore(const StoredSignal &signal, HistoryColumnBuilder &into);
    [[nodiscard]] Result addAfter(const StoredSignal &signal, HistoryColumnBuilder &into);
    [[nodiscard]] Result addPlain(const StoredSignal &signal, HistoryColumnBuilder &into,
                                  const std::atomic<bool> &isCancelled);
    [[nodiscard]] Result addAggregates(const StoredSignal &signal, const StoredBlocks &blocks,
                                       HistoryColumnBuilder &into,
                                       const std::atomic<bool> &isCancelled);
    [[nodiscard]] Result addAggregate(const StoredBlock &block, HistoryColumnBuilder &into,
                                      bool &isRead);
    [[nodiscard]] Result addChunk(const StoredBlock &chunk, HistoryColumnBuilder &into);
    void addTail(HistoryColumnBuilder &into) const;
    [[nodiscard]] Result join(const StoredSignal &signal, Timestamp from, Timestamp to,
                              PyramidBucket &into);
    [[nodiscard]] Result joinBlock(const StoredBlock &block, Timestamp from, Timestamp to,
                                   PyramidBucket &into, bool &isRead);
    [[nodiscard]] Result readChunk(const StoredBlock &chunk);

    ArchiveRows &m_rows;
    LogTails m_tails;
    SampleRun m_tail;      // of the signal that is being read
    SampleRun m_chunk;     // read last
    StoredBlock m_chunkOf; // it; id 0: none
    std::size_t m_damaged = 0;
    std::string m_bytes; // kept for their memory, as the next
    Pyramid m_pyramid;
};

} // namespace Nodes
