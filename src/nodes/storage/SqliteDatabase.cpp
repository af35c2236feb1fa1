#include "nodes/storage/SqliteDatabase.h"

#include "nodes/storage/DamagedFiles.h"
#include "nodes/storage/SqliteStatement.h"

#include <sqlite3.h>

#include <filesystem>

namespace Nodes {

namespace {

constexpr int busyTimeout = 500;  // ms
constexpr int copiedPages = 1000; // in one step
constexpr int writing = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
// A transaction touches a page of an index for each source of its rows: they are to stay in memory
// (32 MiB, as far as used) until it ends, and not to be copied out of the log after each.
constexpr const char *durability =
    "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; PRAGMA cache_size=-32768; "
    "PRAGMA wal_autocheckpoint=4000";

} // namespace

SqliteDatabase::~SqliteDatabase()
{
    Close();
}

void SqliteDatabase::Close()
{
    if (m_handle)
        sqlite3_close_v2(m_handle);
    m_handle = nullptr;
}

Result SqliteDatabase::Open(const std::string &file, Mode mode)
{
    const bool isWriter = mode == Mode::ReadWrite;
    Result result = connect(file, isWriter ? writing : SQLITE_OPEN_READONLY);
    if (result && isWriter)
        result = Execute(durability);
    if (!result)
        Close();
    return result;
}

Result SqliteDatabase::OpenVersion(const std::string &file, std::int64_t newest,
                                   std::int64_t &found)
{
    Result result = connect(file, writing);
    if (!result)
        return result;
    {
        SqliteStatement version(*this, "PRAGMA user_version");
        found = version.Step() ? version.Integer(0) : 0;
        result = version.GetResult();
    }
    if (result && found > newest)
        result = Result(Result::StorageError, file + ": written by a later version of the program");
    if (result)
        result = Execute(durability);
    if (!result)
        Close();
    return result;
}

Result SqliteDatabase::connect(const std::string &file, int flags)
{
    Close();
    m_file = file;
    m_isDamaged = false;
    const int code = sqlite3_open_v2(file.c_str(), &m_handle, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code != SQLITE_OK) {
        noteFailure(code);
        Close();
        return Error("open");
    }
    sqlite3_extended_result_codes(m_handle, 1);
    sqlite3_busy_timeout(m_handle, busyTimeout);
    return Result();
}

Result SqliteDatabase::Execute(const char *sql)
{
    const int code = sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr);
    if (code == SQLITE_OK)
        return Result();
    noteFailure(code);
    return Error("execute");
}

Result SqliteDatabase::Error(const std::string &what) const
{
    return Result(Result::StorageError, m_file + ": " + what + ": " + m_cause);
}

void SqliteDatabase::noteFailure(int code)
{
    m_cause = m_handle ? sqlite3_errmsg(m_handle) : sqlite3_errstr(code);
    const int primary = code & 0xff;
    m_isDamaged = primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

bool SqliteDatabase::IsMoved() const
{
    int isMoved = 0;
    const bool isKnown = m_handle && sqlite3_file_control(m_handle, "main", SQLITE_FCNTL_HAS_MOVED,
                                                          &isMoved) == SQLITE_OK;
    return isKnown && isMoved != 0;
}

Result SqliteDatabase::CopyTo(const std::string &file, const std::function<bool()> &step)
{
    SqliteDatabase target;
    Result result = target.Open(file, Mode::ReadWrite);
    if (!result)
        return result;
    int code = SQLITE_ERROR;
    bool isWanted = true;
    if (sqlite3_backup *backup = sqlite3_backup_init(target.m_handle, "main", m_handle, "main")) {
        do {
            isWanted = step();
            code = isWanted ? sqlite3_backup_step(backup, copiedPages) : SQLITE_ABORT;
        } while (code == SQLITE_OK);
        sqlite3_backup_finish(backup);
    }
    if (!isWanted) {
        result = Result(Result::Cancelled);
    } else if (code != SQLITE_DONE) {
        target.noteFailure(code);
        result = target.Error("copy");
    }
    target.Close(); // which carries the log into the file
    std::error_code ignored;
    for (const char *companion : {"-wal", "-shm", ""}) {
        if (!result)
            std::filesystem::remove(file + companion, ignored);
    }
    return result;
}

// Copied aside and renamed: half a database must never be taken for one.
Result SqliteDatabase::PutBack(const std::function<void()> &step, bool &isPutBack)
{
    namespace fs = std::filesystem;
    isPutBack = false;
    std::error_code error;
    // An empty one was left by an attempt to open it on a full disk.
    if (fs::exists(m_file, error) && fs::file_size(m_file, error) > 0)
        return Result();
    const std::string aside = m_file + ".restored";
    fs::create_directories(fs::path(m_file).parent_path(), error);
    fs::remove(aside, error);
    const Result result = CopyTo(aside, [&] {
        step();
        return true;
    });
    if (!result)
        return result;
    fs::rename(aside, m_file, error);
    if (error)
        return Result(Result::StorageError, m_file + ": " + error.message());
    isPutBack = true;
    return result;
}

std::string SqliteDatabase::SetAside(const std::string &file)
{
    const std::string name = DamagedFiles::FreshName(file);
    std::error_code error;
    std::filesystem::rename(file, name, error);
    if (error)
        return {};
    // Without its log the set-aside file could not be examined, and the new one must not meet it.
    for (const char *companion : {"-wal", "-shm"})
        std::filesystem::rename(file + companion, name + companion, error);
    return name;
}

} // namespace Nodes
