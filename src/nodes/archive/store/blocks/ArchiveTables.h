#pragma once

#include "nodes/archive/store/blocks/ArchiveRows.h"

namespace Nodes {

/// The same for the writer, within a transaction that its owner begins and ends. Reading sees what
/// was written before in the transaction, so an implementation that gathers rows sends them first.
class ArchiveTables : public ArchiveRows
{
public:
    /// Gives it its number.
    [[nodiscard]] virtual Result AddSignal(StoredSignal &signal) = 0;
    [[nodiscard]] virtual Result UpdateSignal(const StoredSignal &signal) = 0;
    /// A new block; its id need not be told.
    [[nodiscard]] virtual Result PutBlock(const StoredBlock &block, const std::string &bytes) = 0;
    [[nodiscard]] virtual Result EraseBlock(const StoredBlock &block) = 0;
    /// Gives the new row its number, above all there have been.
    [[nodiscard]] virtual Result AppendLog(const std::string &bytes, std::int64_t &number) = 0;
    [[nodiscard]] virtual Result EraseLog(std::int64_t upTo) = 0;

    /// Keys of records that were stored, both included.
    struct Keys
    {
        std::uint64_t first = 0;
        std::uint64_t last = 0;
    };
    /// By first.
    [[nodiscard]] virtual Result ReadKeys(std::vector<Keys> &keys) = 0;
    /// In place of the one with the same first.
    [[nodiscard]] virtual Result PutKeys(const Keys &keys) = 0;
    [[nodiscard]] virtual Result EraseKeys(std::uint64_t first) = 0;
    static constexpr std::uint64_t Settled = 0;      ///< in place of a key: people were told of it
    static constexpr std::uint64_t DamagedBlock = 1; ///< no record, but a block that was in the way
    /// Keeps a record that is no packet.
    [[nodiscard]] virtual Result PutOddRecord(std::uint64_t key, const std::string &bytes) = 0;
    /// Those there are count as settled.
    [[nodiscard]] virtual Result SettleOddRecords() = 0;
};

} // namespace Nodes
