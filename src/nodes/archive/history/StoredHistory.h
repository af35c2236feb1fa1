#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/history/HistoryCache.h"
#include "nodes/archive/store/ArchiveReader.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Nodes {

class HistoryColumnBuilder;

/// What a store of samples holds, for as many who ask at a time as there are: each has a reader of
/// his own, which is kept for the next. Any thread; calls take as long as the store does. One that
/// hangs is left alone for a while: its failure answers those who ask next, at once.
class NODES_EXPORT StoredHistory
{
public:
    explicit StoredHistory(std::string location);

    /// See ArchiveReader::Read; a signal that the store does not know has no samples. Before
    /// `closed` nothing is written to the signal any more, as a rule.
    [[nodiscard]] Result Read(const ArchiveSignalKey &signal, Timestamp closed,
                              HistoryColumnBuilder &into,
                              const std::atomic<bool> &isCancelled) const;
    [[nodiscard]] Result Visit(const ArchiveSignalKey &signal, Timestamp from, Timestamp to,
                               const ArchiveReader::Visitor &visitor,
                               const std::atomic<bool> &isCancelled) const;
    [[nodiscard]] Result ListSignals(std::vector<ArchivedSignal> &signals) const;
    void Forget(const ArchiveSignalKey &signal) const { m_cache.Forget(signal); }

private:
    struct Question;

    [[nodiscard]] Result with(const std::function<Result(ArchiveReader &)> &work) const;
    [[nodiscard]] Result readDirect(const Question &question, HistoryColumnBuilder &into) const;
    [[nodiscard]] Result readPieces(const Question &question, HistoryColumnBuilder &into) const;
    [[nodiscard]] Result readPiece(const Question &question, HistoryColumnBuilder piece,
                                   HistoryCache::Column &column) const;
    [[nodiscard]] Result readBlock(const Question &question, Timestamp index,
                                   HistoryCache::Column &column) const;

    const std::string m_location;
    mutable HistoryCache m_cache;
    mutable std::mutex m_mutex; // of the rest
    mutable std::vector<std::unique_ptr<ArchiveReader>> m_idle;
    mutable Result m_hanging;        // how the store failed after a long time
    mutable Timestamp m_trustAt = 0; // steady time from which on it is asked again
};

} // namespace Nodes
