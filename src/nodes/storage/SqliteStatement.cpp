#include "nodes/storage/SqliteStatement.h"

#include "nodes/storage/SqliteDatabase.h"

#include <sqlite3.h>

namespace Nodes {

SqliteStatement::SqliteStatement(SqliteDatabase &database, const std::string &sql)
    : m_database(database)
{
    check(sqlite3_prepare_v2(database.Handle(), sql.c_str(), -1, &m_statement, nullptr));
}

SqliteStatement::~SqliteStatement()
{
    sqlite3_finalize(m_statement);
}

void SqliteStatement::check(int code)
{
    if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE || !m_result)
        return;
    m_database.noteFailure(code);
    m_result = m_database.Error("statement");
}

void SqliteStatement::Bind(int index, std::int64_t value)
{
    check(sqlite3_bind_int64(m_statement, index, value));
}

void SqliteStatement::Bind(int index, std::string_view text)
{
    check(sqlite3_bind_text(m_statement, index, text.data(), static_cast<int>(text.size()),
                            SQLITE_TRANSIENT));
}

void SqliteStatement::BindBlob(int index, std::string_view bytes)
{
    check(sqlite3_bind_blob(m_statement, index, bytes.data(), static_cast<int>(bytes.size()),
                            SQLITE_TRANSIENT));
}

void SqliteStatement::BindReal(int index, double value)
{
    check(sqlite3_bind_double(m_statement, index, value));
}

void SqliteStatement::BindNull(int index)
{
    check(sqlite3_bind_null(m_statement, index));
}

bool SqliteStatement::Step()
{
    if (!m_result)
        return false;
    const int code = sqlite3_step(m_statement);
    check(code);
    return code == SQLITE_ROW;
}

Result SqliteStatement::Run()
{
    while (Step()) {
    }
    Reset();
    return m_result;
}

void SqliteStatement::Reset()
{
    sqlite3_reset(m_statement);
}

double SqliteStatement::Real(int column) const
{
    return sqlite3_column_double(m_statement, column);
}

bool SqliteStatement::IsNull(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

bool SqliteStatement::IsText(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_TEXT;
}

std::int64_t SqliteStatement::Integer(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

std::string SqliteStatement::Bytes(int column) const
{
    const auto *bytes = static_cast<const char *>(sqlite3_column_blob(m_statement, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column));
    return bytes ? std::string(bytes, size) : std::string();
}

} // namespace Nodes
