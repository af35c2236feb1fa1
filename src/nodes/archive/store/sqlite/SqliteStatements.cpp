#include "nodes/archive/store/sqlite/SqliteStatements.h"

#include "nodes/storage/SqliteStatement.h"

namespace Nodes {

SqliteStatements::SqliteStatements(SqliteDatabase &database) : m_database(database) {}

SqliteStatements::~SqliteStatements() = default;

SqliteStatements::Use::~Use()
{
    m_statement.Reset();
}

SqliteStatements::Use SqliteStatements::operator()(const char *sql)
{
    std::unique_ptr<SqliteStatement> &statement = m_statements[sql];
    if (!statement || !statement->GetResult())
        statement = std::make_unique<SqliteStatement>(m_database, sql);
    return Use(*statement);
}

void SqliteStatements::Clear()
{
    m_statements.clear();
}

} // namespace Nodes
