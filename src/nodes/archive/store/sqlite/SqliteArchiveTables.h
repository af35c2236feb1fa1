#pragma once

#include "nodes/archive/store/blocks/ArchiveTables.h"
#include "nodes/archive/store/sqlite/SqliteStatements.h"
#include "nodes/storage/SqliteStoreFile.h"

namespace Nodes {

/// The tables of an archive in SQLite: see docs/archive.md, "Tables".
class SqliteArchiveTables : public ArchiveTables
{
public:
    static constexpr std::int64_t Version = 1;
    static constexpr std::int64_t Application = 0x4F534152; ///< application_id of the file
    static SqliteStoreFile::Schema Schema();

    explicit SqliteArchiveTables(SqliteDatabase &database) : m_statement(database) {}

    /// The connection was closed.
    void Clear() { m_statement.Clear(); }

    [[nodiscard]] Result ReadSignals(std::int64_t after, std::vector<StoredSignal> &found) override;
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
    SqliteStatements m_statement;
};

} // namespace Nodes
