#pragma once

#include "nodes/archive/postgresql/PostgresTables.h"
#include "nodes/archive/store/ArchiveStore.h"
#include "nodes/archive/store/blocks/ArchiveEngine.h"
#include "nodes/archive/store/blocks/ArchiveTrim.h"
#include "nodes/storage/postgresql/PostgresConnection.h"

#include <atomic>
#include <mutex>
#include <string>

namespace Nodes {

/// An archive in a schema of a PostgreSQL database. Several programs may write: their transactions
/// follow one another, and each takes in what the others did before. A server that is away, hangs,
/// restarts or is out of room fails the call within some ten seconds; the next Open connects again.
class PostgresArchive : public ArchiveStore
{
public:
    explicit PostgresArchive(const std::string &location);
    ~PostgresArchive() override;

    /// Without secrets.
    const std::string &GetLocation() const override;
    [[nodiscard]] Result Open(StoreOpening &opening) override;
    bool IsDistant() const override { return true; }
    void Close() override;
    bool IsOpen() const override;
    bool NoticeMove() override;
    [[nodiscard]] Result Write(const Records &records,
                               std::vector<std::uint64_t> &numbers) override;
    [[nodiscard]] Result Tend(Upkeep &upkeep) override;
    void SetRetention(const ArchiveRetentionRules &rules) override;

private:
    [[nodiscard]] Result trim(bool &hasMore);
    [[nodiscard]] Result transact(const std::function<Result()> &work);

    PostgresConnection m_connection;
    PostgresTables m_tables;
    ArchiveEngine m_engine;
    ArchiveTrim m_trim;
    std::atomic<Timestamp> m_nextTrim{0}; // steady time
    std::int64_t m_turn = -1;             // of our last transaction
    bool m_isGone = false;                // the tables were taken away while they were open
    std::mutex m_mutex;                   // of the rest
    ArchiveRetentionRules m_rules;
};

} // namespace Nodes
