#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/store/ArchiveBucket.h"
#include "nodes/archive/store/ArchiveFinding.h"
#include "nodes/archive/store/ArchiveSignalKey.h"
#include "nodes/archive/store/SampleRun.h"
#include "nodes/storage/StoreTable.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Nodes {

class HistoryColumnBuilder;

/// What an archive holds of one signal.
struct ArchivedSignal
{
    ArchiveSignalKey key; ///< called as it was last
    Timestamp first = 0;  ///< of its oldest sample
    Timestamp last = 0;   ///< of its newest; 0 when it has none
    std::uint64_t samples = 0;
    std::uint64_t bytes = 0; ///< packed, in the store
    /// Span of samples that were made up (SamplePacket::Part::isGenerated); 0, 0: none was.
    Timestamp generatedFrom = 0;
    Timestamp generatedTo = 0;

    bool IsGenerated() const { return generatedTo != 0; }
};

/// Reads an archive on a connection of its own, beside the one who writes, from whatever process;
/// it holds up nobody and connects when first asked, again after a failure. Each call sees what was
/// committed when it began, unless it says otherwise. A store without a signal that is asked for
/// answers NotFound, one that cannot be read StorageError; Cancelled comes soon after the flag is
/// set. One thread at a time.
class ArchiveReader
{
public:
    virtual ~ArchiveReader() = default;

    virtual const std::string &GetLocation() const = 0;

    /// By project, station and node.
    [[nodiscard]] virtual Result ListSignals(std::vector<ArchivedSignal> &found) = 0;

    /// For HistorySource::Read: the samples of the builder's span while they fit into its points,
    /// else ready aggregates; the sample before and the one behind. Takes about as long for a year
    /// as for an hour, while points are limited. Texts are gaps.
    [[nodiscard]] virtual Result Read(const ArchiveSignalKey &signal, HistoryColumnBuilder &into,
                                      const std::atomic<bool> &isCancelled) = 0;

    /// Gets samples, oldest first, some thousand at a time; false ends the visit, as a success.
    using Visitor = std::function<bool(const SampleRun &)>;
    /// All samples with `from` <= time <= `to`, however many, in bounded memory; none when `to` is
    /// before `from`. Samples that are written meanwhile are visited where they lie ahead.
    [[nodiscard]] virtual Result Visit(const ArchiveSignalKey &signal, Timestamp from, Timestamp to,
                                       const Visitor &visitor,
                                       const std::atomic<bool> &isCancelled) = 0;
    /// `count` buckets of one width over [from, to), at least a microsecond each; empty ones among
    /// them. InvalidArgument for a span that is empty or no bucket.
    [[nodiscard]] virtual Result ReadBuckets(const ArchiveSignalKey &signal, Timestamp from,
                                             Timestamp to, std::size_t count,
                                             std::vector<ArchiveBucket> &buckets,
                                             const std::atomic<bool> &isCancelled) = 0;

    /// Looks at everything; what is wrong is added to `findings`. Success when it could look, also
    /// when there is something wrong. May take long.
    [[nodiscard]] virtual Result Verify(ArchiveFindings &findings,
                                        const std::atomic<bool> &isCancelled) = 0;
    /// Takes out of the store what cannot be read and makes anew what follows from the rest; what
    /// was done is added to `findings`. Works beside a running writer.
    [[nodiscard]] virtual Result Repair(ArchiveFindings &findings,
                                        const std::atomic<bool> &isCancelled) = 0;
    /// Consistent copy to a place that does not exist yet, while the writer goes on; Duplicate when
    /// it does. `step` is called now and then; false ends it with Cancelled, and nothing is left.
    [[nodiscard]] virtual Result Backup(const std::string &to,
                                        const std::function<bool()> &step) = 0;
};

/// Kinds of reader by the location of the store, as of ArchiveStores.
NODES_EXPORT StoreTable<ArchiveReader> &ArchiveReaders();

} // namespace Nodes
