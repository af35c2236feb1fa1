#include "nodes/archive/store/sqlite/SqliteArchiveConnection.h"

#include "nodes/archive/store/sqlite/SqliteSalvage.h"
#include "nodes/storage/SqliteStatement.h"

#include <filesystem>

namespace Nodes {

namespace {

constexpr int mostFaults = 100; // of the database's own check, told one by one

Result readNumber(SqliteDatabase &database, const char *sql, std::int64_t &number)
{
    SqliteStatement statement(database, sql);
    number = statement.Step() ? statement.Integer(0) : 0;
    return statement.GetResult();
}

} // namespace

Result SqliteArchiveConnection::connect()
{
    std::error_code ignored;
    if (!std::filesystem::exists(m_file, ignored))
        return Result(Result::NotFound, m_file + ": there is no such file");
    std::int64_t version = 0;
    std::int64_t application = 0;
    Result result = m_database.Open(m_file, SqliteDatabase::Mode::ReadOnly);
    if (result)
        result = readNumber(m_database, "PRAGMA user_version", version);
    if (result)
        result = readNumber(m_database, "PRAGMA application_id", application);
    if (result && application != SqliteArchiveTables::Application)
        result = Result(Result::StorageError, m_file + ": is no archive of samples");
    else if (result && version > SqliteArchiveTables::Version)
        result =
            Result(Result::StorageError, m_file + ": written by a later version of the program");
    if (!result)
        Close();
    return result;
}

Result SqliteArchiveConnection::Begin(bool &isNew)
{
    if (m_database.IsOpen() && m_database.IsMoved())
        Close();
    isNew = !m_database.IsOpen();
    Result result = isNew ? connect() : Result();
    if (result)
        result = m_database.Execute("BEGIN");
    if (!result)
        Close();
    return result;
}

void SqliteArchiveConnection::End()
{
    if (m_database.IsOpen())
        (void)m_database.Execute("COMMIT");
}

void SqliteArchiveConnection::Close()
{
    m_rows.Clear();
    m_database.Close();
}

Result SqliteArchiveConnection::Check(ArchiveFindings &findings)
{
    const std::string sql = "PRAGMA integrity_check(" + std::to_string(mostFaults) + ")";
    SqliteStatement check(m_database, sql);
    while (check.Step()) {
        if (const std::string text = check.Bytes(0); text != "ok")
            findings.push_back({{}, 0, 0, m_file, text});
    }
    return check.GetResult();
}

Result SqliteArchiveConnection::Salvage(ArchiveFindings &done)
{
    bool isNew = false;
    Result result = Begin(isNew);
    if (!result && !SqliteSalvage::IsOurs(m_file))
        return result;
    ArchiveFindings wrong;
    if (result)
        result = Check(wrong);
    End();
    Close();
    return result && wrong.empty() ? result : SqliteSalvage(m_file, done).Run();
}

Result SqliteArchiveConnection::Change(const Work &work)
{
    SqliteDatabase database;
    Result result = database.Open(m_file, SqliteDatabase::Mode::ReadWrite);
    if (result)
        result = database.Execute("BEGIN IMMEDIATE");
    if (!result)
        return result;
    SqliteArchiveTables tables(database);
    result = work(tables);
    tables.Clear();
    if (result)
        result = database.Execute("COMMIT");
    else
        (void)database.Execute("ROLLBACK");
    return result;
}

/// All of it as it was when the copying began, however much is written meanwhile.
Result SqliteArchiveConnection::Backup(const std::string &to, const std::function<bool()> &step)
{
    std::error_code ignored;
    if (std::filesystem::exists(to, ignored))
        return Result(Result::Duplicate, to + ": exists already");
    bool isNew = false;
    Result result = Begin(isNew);
    if (!result)
        return result;
    std::int64_t rows = 0;
    result = readNumber(m_database, "SELECT count(*) FROM sqlite_master", rows);
    if (result)
        result = m_database.CopyTo(to, step);
    End();
    return result;
}

} // namespace Nodes
