#pragma once

#include "nodes/archive/store/ArchiveStore.h"
#include "nodes/storage/SqliteStore.h"

#include <memory>
#include <mutex>

namespace Nodes {

/// The archive in an SQLite file.
class SqliteArchive : public SqliteStore<ArchiveStore>
{
public:
    explicit SqliteArchive(const std::string &file);
    ~SqliteArchive() override;

    [[nodiscard]] Result Open(StoreOpening &opening) override;
    void Close() override;
    bool NoticeMove() override;
    [[nodiscard]] Result Write(const Records &records,
                               std::vector<std::uint64_t> &numbers) override;
    [[nodiscard]] Result Tend(Upkeep &upkeep) override;
    void SetRetention(const ArchiveRetentionRules &rules) override;

private:
    struct Session;

    [[nodiscard]] Result transact(const std::function<Result()> &work);
    [[nodiscard]] Result takeInOthers();
    [[nodiscard]] Result trim(Upkeep &upkeep);

    std::unique_ptr<Session> m_session; // while open
    Timestamp m_nextTrim = 0;           // steady time
    std::mutex m_rulesMutex;
    ArchiveRetentionRules m_newRules; // guarded
    bool m_isSet = false;             // guarded: there are new ones
    ArchiveRetentionRules m_rules;
};

} // namespace Nodes
