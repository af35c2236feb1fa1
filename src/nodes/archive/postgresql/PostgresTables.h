#pragma once

#include "nodes/archive/postgresql/PostgresParameters.h"
#include "nodes/archive/store/blocks/ArchiveTables.h"

#include <cstddef>
#include <map>
#include <string>

namespace Nodes {

class PostgresConnection;

/// The tables of PostgresSchema over one connection. Blocks that are put are gathered and sent
/// together, before anything that could miss them; blocks that are read one after the other are
/// fetched several at a time. One thread.
class PostgresTables : public ArchiveTables
{
public:
    explicit PostgresTables(PostgresConnection &connection) : m_connection(connection) {}

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

    [[nodiscard]] Result fetch(const StoredBlock &block);

    PostgresConnection &m_connection;
    Gathered m_gathered;
    std::map<std::int64_t, std::string> m_fetched; // by id
    std::int64_t m_fetchedSignal = 0;
    int m_fetchedHeight = -1;
    Timestamp m_fetchedTo = 0; // first of the last one that was fetched
    std::size_t m_ahead = 1;   // that are fetched at once
};

} // namespace Nodes
