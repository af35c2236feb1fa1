#pragma once

#include "nodes/journal/JournalStore.h"
#include "nodes/storage/SqliteStore.h"

#include <map>
#include <string>

namespace Nodes {

class SqliteStatement;

/// The journal in an SQLite file. Files of the first version are brought up to date when they are
/// opened; their rows stay as they are.
class SqliteJournal : public SqliteStore<JournalStore>
{
public:
    explicit SqliteJournal(const std::string &file);

    [[nodiscard]] Result Open(StoreOpening &opening) override;
    [[nodiscard]] Result Write(const Records &records,
                               std::vector<std::uint64_t> &numbers) override;
    [[nodiscard]] Result Tend(Upkeep &upkeep) override;
    SearchMaker GetSearchMaker() const override;
    void SetRetention(const JournalRetention &retention, const RecordHome &home) override;

private:
    [[nodiscard]] Result append(const Records &records, std::vector<std::uint64_t> &numbers);
    struct OriginStatements;

    [[nodiscard]] Result findOrigin(OriginStatements &statements, const RecordSource &source,
                                    std::int64_t &origin);

    [[nodiscard]] Result beginTrim(Upkeep &upkeep);
    [[nodiscard]] Result extendTexts(bool &hasMore);

    std::map<RecordSource, std::int64_t> m_origins; // numbers of sources that are in the file
    JournalRetention m_retention;
    RecordHome m_home;
    Timestamp m_nextLook = 0;      // steady time
    std::uint64_t m_unindexed = 0; // rows without a block in the index of texts, at least
};

} // namespace Nodes
