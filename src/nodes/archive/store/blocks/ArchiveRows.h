#pragma once

#include "nodes/archive/store/blocks/StoredBlock.h"
#include "nodes/values/Result.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace Nodes {

/// The tables of an archive as reading wants them, whatever database they are in. What the bytes
/// mean is none of its business. One thread.
class ArchiveRows
{
public:
    virtual ~ArchiveRows() = default;

    /// Signals with a number above `after`, by number.
    [[nodiscard]] virtual Result ReadSignals(std::int64_t after,
                                             std::vector<StoredSignal> &found) = 0;
    [[nodiscard]] virtual Result FindSignal(const ArchiveSignalKey &key,
                                            std::optional<StoredSignal> &signal) = 0;
    /// Blocks of a signal and height, by time, `limit` at most: those that begin within (from, to],
    /// and before them the last one that begins at or before `from`, whether it reaches that or
    /// not.
    [[nodiscard]] virtual Result ListBlocks(std::int64_t signal, int height, Timestamp from,
                                            Timestamp to, std::size_t limit,
                                            StoredBlocks &blocks) = 0;
    /// NotFound when it is gone.
    [[nodiscard]] virtual Result ReadBlock(const StoredBlock &block, std::string &bytes) = 0;
    /// Samples and bytes of the chunks of a signal, first and last time; samples 0: none.
    [[nodiscard]] virtual Result SumChunks(std::int64_t signal, StoredBlock &sum) = 0;

    using LogVisitor = std::function<void(std::int64_t number, const std::string &bytes)>;
    /// Number of the oldest row of the log; 0: it is empty.
    [[nodiscard]] virtual Result FirstLogRow(std::int64_t &number) = 0;
    /// Rows with a number above `after`, in order.
    [[nodiscard]] virtual Result ReadLog(std::int64_t after, const LogVisitor &visitor) = 0;

    using OddVisitor = std::function<void(std::uint64_t key, const std::string &bytes)>;
    /// Records that were no packets, and that people were not told of.
    [[nodiscard]] virtual Result ReadOddRecords(const OddVisitor &visitor) = 0;
};

} // namespace Nodes
