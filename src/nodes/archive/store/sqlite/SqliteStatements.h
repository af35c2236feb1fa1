#pragma once

#include <map>
#include <memory>

namespace Nodes {

class SqliteDatabase;
class SqliteStatement;

/// Statements of one connection, prepared once each. One thread.
class SqliteStatements
{
public:
    explicit SqliteStatements(SqliteDatabase &database);
    ~SqliteStatements();

    /// A statement for as long as it is used: reset behind that, so that it holds nothing.
    class Use
    {
    public:
        explicit Use(SqliteStatement &statement) : m_statement(statement) {}
        ~Use();
        Use(const Use &) = delete;
        Use &operator=(const Use &) = delete;
        SqliteStatement *operator->() { return &m_statement; }
        SqliteStatement &operator*() { return m_statement; }

    private:
        SqliteStatement &m_statement;
    };

    /// `sql` is a literal: it is known by its address. One that failed is prepared anew.
    Use operator()(const char *sql);
    /// The connection was closed.
    void Clear();

private:
    SqliteDatabase &m_database;
    std::map<const char *, std::unique_ptr<SqliteStatement>> m_statements;
};

} // namespace Nodes
