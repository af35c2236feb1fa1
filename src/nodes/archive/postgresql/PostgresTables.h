#pragma once

#include "nodes/archive/store/blocks/ArchiveTables.h"
#include "nodes/storage/postgresql/PostgresParameters.h"

#include <cstddef>
#include <map>
#include <string>

namespace Nodes {

class PostgresConnection;

/// The tables of PostgresSchema over one connection. Each question costs a way to the server and
/// back: blocks that are put are gathered and sent together, before anything that could miss them;
/// blocks that are read one after the other are fetched several at a time. One thread.
class PostgresTables : public ArchiveTables
{
public:
    enum class Use {
        Reading, ///< nothing is changed, and all of a transaction is of one moment: lists are kept
        Writing
    };

    PostgresTables(PostgresConnection &connection, Use use) : m_connection(connection), m_use(use)
    {
    }

    /// What was gathered is sent; before the transaction is committed.
    [[nodiscard]] Result Send();
    /// Forgets what was gathered and fetched: another transaction begins, or the one was undone.
    void Forget();

    [[nodiscard]] Result ReadSignals(std::int64_t after,
                                     std::vector<StoredSignal> &signals) override;
    [[nodiscard]] Result FindSignal(const ArchiveSignalKey &key,
                                    std::optional<StoredSignal> &signal) override;
    [[nodiscard]] Result ListBlocks(std::int64_t signal, int height, Timestamp from, Timestamp to,
                                    std::size_t limit, StoredBlocks &blocks) override;
    [[nodiscard]] Result ReadBlock(const StoredBlock &block, std::string &bytes) override;
    [[nodiscard]] Result SumChunks(std::int64_t signal, StoredBlock &sum) override;
    [[nodiscard]] Result FirstLogRow(std::int64_t &number) override;
    [[nodiscard]] Result ReadLog(std::int64_t after, const LogVisitor &visitor) override;
    [[nodiscard]] Result ReadOddRecords(const OddVisitor &visitor) override;

    [[nodiscard]] Result AddSignal(StoredSignal &signal) override;
    [[nodiscard]] Result UpdateSignal(const StoredSignal &signal) override;
    [[nodiscard]] Result PutBlock(const StoredBlock &block, const std::string &bytes) override;
    [[nodiscard]] Result EraseBlock(const StoredBlock &block) override;
    [[nodiscard]] Result AppendLog(const std::string &bytes, std::int64_t &number) override;
    [[nodiscard]] Result EraseLog(std::int64_t upTo) override;
    [[nodiscard]] Result ReadKeys(std::vector<Keys> &keys) override;
    [[nodiscard]] Result PutKeys(const Keys &keys) override;
    [[nodiscard]] Result EraseKeys(std::uint64_t first) override;
    [[nodiscard]] Result PutOddRecord(std::uint64_t key, const std::string &bytes) override;
    [[nodiscard]] Result SettleOddRecords() override;

private:
    /// Columns of blocks that are to be sent.
    struct Gathered
    {
        PostgresParameters::Integers signals, heights, bits, firsts, lasts, samples, sizes;
        PostgresParameters::ByteStrings bytes;
        std::size_t count = 0;
        std::size_t volume = 0;
    };

    /// All blocks of a signal and height that begin from `from` on up to `to`, and the one before.
    struct Window
    {
        std::int64_t signal = 0;
        Timestamp from = 0;
        Timestamp to = 0;
        StoredBlocks blocks;
    };
    /// Where the last block of a height was read.
    struct Trail
    {
        std::int64_t signal = 0;
        Timestamp at = 0;
        std::size_t ahead = 1; // blocks fetched at once
    };

    [[nodiscard]] Result list(std::int64_t signal, int height, Timestamp from, Timestamp to,
                              std::size_t limit, StoredBlocks &blocks);
    [[nodiscard]] Result widen(std::int64_t signal, int height, Timestamp from);
    [[nodiscard]] Result fetch(const StoredBlock &block);

    PostgresConnection &m_connection;
    const Use m_use;
    Gathered m_gathered;
    std::map<int, Window> m_windows;               // by height
    std::map<int, Trail> m_trails;                 // by height
    std::map<std::int64_t, std::string> m_fetched; // by id
};

} // namespace Nodes
