#pragma once

#include "nodes/storage/BasicStore.h"
#include "nodes/storage/records/Record.h"

#include <cstdint>
#include <vector>

namespace Nodes {

/// Where records go in the end: what RecordWriter fills.
///
/// An implementation promises, besides what BasicStore says:
/// - Write takes all records of a batch or none, in their order, in one transaction.
/// - A record whose key it has is passed over, in whatever order records come and however often
///   they are written again, after a restart too: that is what makes the replay of a spill file
///   exact. Keys of one run count up, so intervals of keys can be noted in the transaction instead
///   of each key, but the latest one is not enough: after a disk has hung, earlier ones may follow.
/// - What was written survives the end of the program and a loss of power once Flush returned.
///   Nothing is dropped from a spill file before that.
/// - Reading is done elsewhere and holds up no writing.
class RecordStore : public BasicStore
{
public:
    /// `numbers` gets the place of each record in the store, in the order of the batch: from 1 on,
    /// 0 for a record that was passed over.
    [[nodiscard]] virtual Result Write(const Records &records,
                                       std::vector<std::uint64_t> &numbers) = 0;
    /// For stores that gather several batches before they ask the disk.
    [[nodiscard]] virtual Result Flush() { return Result(); }

    /// What the store itself found to do.
    struct Upkeep
    {
        bool hasMore = false;               ///< ask again soon
        Records records;                    ///< that it made and stored
        std::vector<std::uint64_t> numbers; ///< of those
    };
    /// A short step of work of its own (retention, sealing), asked for while the store is open,
    /// between batches and about once a second.
    [[nodiscard]] virtual Result Tend(Upkeep &) { return Result(); }
};

} // namespace Nodes
