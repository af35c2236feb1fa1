#include "nodes/archive/postgresql/PostgresArchiveConnection.h"

#include "nodes/archive/postgresql/PostgresBackup.h"
#include "nodes/archive/postgresql/PostgresSchema.h"

namespace Nodes {

namespace {

constexpr const char *beginLook = "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY";

} // namespace

PostgresArchiveConnection::PostgresArchiveConnection(const std::string &location)
    : m_connection(PostgresLocation(location, "archive"), "station archive reader"),
      m_tables(m_connection, PostgresTables::Use::Reading)
{
}

const std::string &PostgresArchiveConnection::GetLocation() const
{
    return m_connection.GetLocation().GetShown();
}

Result PostgresArchiveConnection::Begin(bool &isNew)
{
    (void)m_connection.NoticeEnd();
    isNew = !m_connection.IsOpen();
    m_tables.Forget();
    Result result;
    if (isNew) {
        result = m_connection.Open(PostgresConnection::Mode::ReadOnly);
        if (result)
            result = PostgresSchema::Check(m_connection);
    }
    if (result)
        result = m_connection.Execute(beginLook);
    if (!result)
        m_connection.Close();
    return result;
}

void PostgresArchiveConnection::End()
{
    if (m_connection.IsOpen() && !m_connection.Execute("COMMIT"))
        m_connection.Close();
}

void PostgresArchiveConnection::Close()
{
    m_connection.Close();
}

/// What the server's own checks find needs its administrator (amcheck); what it tells while the
/// tables are read comes as the failure of that.
Result PostgresArchiveConnection::Check(ArchiveFindings &findings)
{
    PostgresAnswer rows;
    const Result result = m_connection.Query(
        "SELECT indexrelid::regclass FROM pg_index WHERE NOT (indisvalid AND indisready) AND "
        "indrelid IN (SELECT oid FROM pg_class WHERE relnamespace = to_regnamespace($1))",
        PostgresParameters().Add(std::string_view(m_connection.GetLocation().GetSchema())), rows);
    for (int row = 0; row < rows.Size(); ++row) {
        ArchiveFinding finding;
        finding.place = GetLocation() + ": index " + std::string(rows.Text(row, 0));
        finding.text = "is not valid: REINDEX is wanted";
        findings.push_back(std::move(finding));
    }
    return result;
}

Result PostgresArchiveConnection::Change(const Work &work)
{
    PostgresConnection connection(m_connection.GetLocation(), "station archive repair");
    Result result = connection.Open(PostgresConnection::Mode::ReadWrite);
    if (result)
        result = PostgresSchema::Check(connection);
    if (!result)
        return result;
    PostgresTables tables(connection, PostgresTables::Use::Writing);
    return connection.Transact(PostgresSchema::BeginTurn, [&](const PostgresAnswer &) {
        const Result done = work(tables);
        return done ? tables.Send() : done;
    });
}

Result PostgresArchiveConnection::Backup(const std::string &to, const std::function<bool()> &step)
{
    bool isNew = false;
    Result result = Begin(isNew);
    if (!result)
        return result;
    result = PostgresBackup(m_tables).Run(to, step);
    End();
    return result;
}

} // namespace Nodes
