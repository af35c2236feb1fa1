#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

#include <cstdint>
#include <functional>
#include <string>

struct sqlite3;

namespace Nodes {

/// One connection to an SQLite file. Used by one thread at a time.
class NODES_EXPORT SqliteDatabase
{
public:
    enum class Mode { ReadOnly, ReadWrite };

    SqliteDatabase() = default;
    ~SqliteDatabase();
    SqliteDatabase(const SqliteDatabase &) = delete;
    SqliteDatabase &operator=(const SqliteDatabase &) = delete;

    /// ReadWrite creates the file, switches it to write-ahead logging and full synchronisation:
    /// what was committed survives a loss of power. Waits up to half a second for other processes.
    [[nodiscard]] Result Open(const std::string &file, Mode mode);
    /// The same for writing, with the version of the schema (user_version) that was found. Nothing
    /// is changed in a file that has a later one than `newest`, which is StorageError.
    [[nodiscard]] Result OpenVersion(const std::string &file, std::int64_t newest,
                                     std::int64_t &found);
    void Close();
    bool IsOpen() const { return m_handle != nullptr; }
    [[nodiscard]] Result Execute(const char *sql);

    /// StorageError with the file, `what` was tried and the cause of the last failure.
    Result Error(const std::string &what) const;
    /// True when the last failure means that the file's content is no sound database.
    bool IsDamaged() const { return m_isDamaged; }
    sqlite3 *Handle() const { return m_handle; }

    /// The file that was opened is no longer found under its name: removed, replaced, or its file
    /// system taken away. Asks the disk.
    bool IsMoved() const;
    /// Copies what the connection sees, also of a file that was deleted, into a new file. `step` is
    /// called every few megabytes; false ends it with Cancelled. What was written is removed after
    /// a failure. Within a transaction it is the state of that, however much others write.
    [[nodiscard]] Result CopyTo(const std::string &file, const std::function<bool()> &step);

    /// Puts what a file held that is no longer found where it was, unless another file stands there
    /// by now: then `isPutBack` stays false. Connections to the new file are made anew. `step`: see
    /// CopyTo.
    [[nodiscard]] Result PutBack(const std::function<void()> &step, bool &isPutBack);

    /// Renames the database and its companions to "<file>.damaged-<UTC time>"; the new name is
    /// returned, "" when renaming failed. No connection may be open.
    static std::string SetAside(const std::string &file);

private:
    friend class SqliteStatement;

    [[nodiscard]] Result connect(const std::string &file, int flags);
    void noteFailure(int code);

    sqlite3 *m_handle = nullptr;
    std::string m_file;
    std::string m_cause;
    bool m_isDamaged = false;
};

} // namespace Nodes
