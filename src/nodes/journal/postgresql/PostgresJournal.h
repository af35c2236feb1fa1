#pragma once

#include "nodes/journal/JournalStore.h"
#include "nodes/storage/postgresql/PostgresConnection.h"

#include <map>
#include <string>

namespace Nodes {

/// The journal in a schema of a PostgreSQL database. A server that is away, hangs, restarts or is
/// out of room fails the call within some ten seconds; the next Open connects again.
class PostgresJournal : public JournalStore
{
public:
    explicit PostgresJournal(const std::string &location);

    /// Without secrets.
    const std::string &GetLocation() const override;
    [[nodiscard]] Result Open(StoreOpening &opening) override;
    bool IsDistant() const override { return true; }
    void Close() override;
    bool IsOpen() const override { return m_connection.IsOpen(); }
    bool NoticeMove() override;
    [[nodiscard]] Result Write(const Records &records,
                               std::vector<std::uint64_t> &numbers) override;
    [[nodiscard]] Result Tend(Upkeep &upkeep) override;
    SearchMaker GetSearchMaker() const override;
    void SetRetention(const JournalRetention &retention, const RecordHome &home) override;

private:
    [[nodiscard]] Result transact(const PostgresConnection::Work &work);
    [[nodiscard]] Result append(const Records &records, std::vector<std::uint64_t> &numbers);
    [[nodiscard]] Result findOrigin(const RecordSource &source, std::int64_t &origin);
    [[nodiscard]] Result beginTrim(Upkeep &upkeep);

    const std::string m_given; // with its secrets, for searches
    PostgresConnection m_connection;
    std::map<RecordSource, std::int64_t> m_origins; // numbers of sources that are in the database
    JournalRetention m_retention;
    RecordHome m_home;
    Timestamp m_nextLook = 0; // steady time
    bool m_isGone = false;    // the tables were taken away while they were open
};

} // namespace Nodes
