#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

#include <cstdint>
#include <string>
#include <string_view>

struct sqlite3_stmt;

namespace Nodes {

class SqliteDatabase;

/// A prepared statement of one connection, which must outlive it. Indexes of parameters count
/// from 1, of columns from 0. Failures are kept until asked for: see GetResult.
class NODES_EXPORT SqliteStatement
{
public:
    SqliteStatement(SqliteDatabase &database, const std::string &sql);
    ~SqliteStatement();
    SqliteStatement(const SqliteStatement &) = delete;
    SqliteStatement &operator=(const SqliteStatement &) = delete;

    void Bind(int index, std::int64_t value);
    /// Text and blobs are copied.
    void Bind(int index, std::string_view text);
    void BindNull(int index);
    void BindReal(int index, double value);
    void BindBlob(int index, std::string_view bytes);

    /// True while there is a row to read.
    bool Step();
    /// Runs a statement that gives no rows and makes it ready for the next parameters.
    [[nodiscard]] Result Run();
    /// Ready for the next parameters, before the last row was reached.
    void Reset();
    /// Failure of any call so far; success without one.
    Result GetResult() const { return m_result; }

    std::int64_t Integer(int column) const;
    double Real(int column) const;
    /// True for SQL's NULL, which the other readers give as 0 and "".
    bool IsNull(int column) const;
    bool IsText(int column) const;
    /// Bytes of a text or blob.
    std::string Bytes(int column) const;

private:
    void check(int code);

    SqliteDatabase &m_database;
    sqlite3_stmt *m_statement = nullptr;
    Result m_result;
};

} // namespace Nodes
