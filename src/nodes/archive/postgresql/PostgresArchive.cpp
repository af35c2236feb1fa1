#include "nodes/archive/postgresql/PostgresArchive.h"

#include "nodes/archive/postgresql/PostgresSchema.h"
#include "nodes/storage/Digest.h"
#include "nodes/values/Clock.h"

#include <utility>

namespace Nodes {

namespace {

constexpr Timestamp trimPeriod = Timestamp(600) * 1000000;

/// What a server's administrator sees; no other writer has it.
std::string sessionName()
{
    return "station archive " + std::to_string(RandomStart() % 1000000000);
}

/// Of a connection that was lost the server may know nothing yet: what it holds would be in the
/// way for a minute.
constexpr const char *endFormer =
    "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid <> pg_backend_pid() AND "
    "usename = current_user AND application_name = current_setting('application_name')";

} // namespace

PostgresArchive::PostgresArchive(const std::string &location)
    : m_connection(PostgresLocation(location, "archive"), sessionName()),
      m_tables(m_connection, PostgresTables::Use::Writing),
      m_engine(m_tables),
      m_trim(m_tables)
{
}

PostgresArchive::~PostgresArchive() = default;

const std::string &PostgresArchive::GetLocation() const
{
    return m_connection.GetLocation().GetShown();
}

Result PostgresArchive::Open(StoreOpening &opening)
{
    m_turn = -1;
    m_tables.Forget();
    m_engine.Forget();
    m_nextTrim = 0;
    Result result = m_connection.Open(PostgresConnection::Mode::ReadWrite);
    if (result)
        result = m_connection.Execute(endFormer);
    if (result)
        result = PostgresSchema::Prepare(m_connection);
    if (!result) {
        m_connection.Close();
        return result;
    }
    opening.isReplaced = std::exchange(m_isGone, false);
    return result;
}

void PostgresArchive::Close()
{
    m_connection.Close();
    m_engine.Forget();
    m_tables.Forget();
}

bool PostgresArchive::IsOpen() const
{
    return m_connection.IsOpen();
}

/// A server that went away has moved nothing: what follows is a failure like any other.
bool PostgresArchive::NoticeMove()
{
    (void)m_connection.NoticeEnd();
    return false;
}

Result PostgresArchive::transact(const std::function<Result()> &work)
{
    m_tables.Forget();
    const Result result =
        m_connection.Transact(PostgresSchema::BeginTurn, [&](const PostgresAnswer &begun) {
            if (begun.Size() != 1)
                return Result(Result::StorageError, GetLocation() + ": the table turn is empty");
            const std::int64_t turn = begun.Integer(0, 0);
            if (turn != m_turn + 1)
                m_engine.Forget();
            m_turn = turn;
            const Result done = work();
            return done ? m_tables.Send() : done;
        });
    if (result)
        return result;
    m_turn = -1; // what is in memory may not be in the database
    m_isGone = m_connection.GetState() == "42P01" || m_connection.GetState() == "3F000";
    if (m_isGone)
        m_connection.Close();
    return result;
}

Result PostgresArchive::Write(const Records &records, std::vector<std::uint64_t> &numbers)
{
    return transact([&] { return m_engine.Write(records, numbers); });
}

Result PostgresArchive::Tend(Upkeep &upkeep)
{
    if (m_engine.NeedsPacking())
        return transact([&] { return m_engine.Pack(upkeep.hasMore); });
    return Clock::Current().Steady() < m_nextTrim ? Result() : trim(upkeep.hasMore);
}

Result PostgresArchive::trim(bool &hasMore)
{
    ArchiveRetentionRules rules;
    {
        const std::lock_guard lock(m_mutex);
        rules = m_rules;
    }
    const Clock &clock = Clock::Current();
    const Result result = transact([&] { return m_trim.Step(rules, clock.Now(), hasMore); });
    if (!result)
        m_trim.Restart();
    if (!result || !hasMore)
        m_nextTrim = clock.Steady() + trimPeriod;
    return result;
}

void PostgresArchive::SetRetention(const ArchiveRetentionRules &rules)
{
    const std::lock_guard lock(m_mutex);
    m_rules = rules;
    m_nextTrim = 0;
}

} // namespace Nodes
