#include "nodes/storage/DatabaseFiles.h"

#include "nodes/storage/SqliteDatabase.h"
#include "nodes/storage/SqliteStatement.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <set>

namespace Nodes {

namespace fs = std::filesystem;

namespace {

constexpr const char *companions[] = {"-wal", "-shm", "-journal"};
constexpr int operationsBetweenChecks = 10000;

/// Device and inode: the same file under whatever name.
using Identity = std::pair<dev_t, ino_t>;

bool endsWith(const std::string &text, const std::string &ending)
{
    return text.size() >= ending.size() &&
           text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

bool isDatabase(const std::string &name)
{
    const bool isNamedSo = name.find(".sqlite") != std::string::npos || endsWith(name, ".db");
    return isNamedSo &&
           std::none_of(std::begin(companions), std::end(companions),
                        [&](const char *companion) { return endsWith(name, companion); });
}

void collectOpen(const fs::path &process, std::set<Identity> &open)
{
    std::error_code error;
    for (fs::directory_iterator fd(process / "fd", error), end; !error && fd != end;
         fd.increment(error)) {
        struct stat status;
        if (::stat(fd->path().c_str(), &status) == 0 && S_ISREG(status.st_mode))
            open.emplace(status.st_dev, status.st_ino);
    }
}

/// Regular files that any process which may be looked into has open.
std::set<Identity> openFiles()
{
    std::set<Identity> open;
    std::error_code error;
    for (fs::directory_iterator process("/proc", error), end; !error && process != end;
         process.increment(error)) {
        const std::string name = process->path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos)
            collectOpen(process->path(), open);
    }
    return open;
}

bool isOpen(const std::string &file, const std::set<Identity> &open)
{
    struct stat status;
    return ::stat(file.c_str(), &status) == 0 && open.count({status.st_dev, status.st_ino}) != 0;
}

DatabaseFiles::File describe(const std::string &file, const std::set<Identity> &open)
{
    DatabaseFiles::File described;
    struct stat status;
    if (::stat(file.c_str(), &status) == 0) {
        described.size = std::uint64_t(status.st_size);
        described.changed = Timestamp(status.st_mtim.tv_sec) * 1000000;
    }
    if (::stat((file + "-wal").c_str(), &status) == 0) {
        described.size += std::uint64_t(status.st_size);
        described.changed = std::max(described.changed, Timestamp(status.st_mtim.tv_sec) * 1000000);
    }
    described.isInUse = isOpen(file, open);
    return described;
}

int stopWhenCancelled(void *flag)
{
    return *static_cast<const std::atomic<bool> *>(flag) ? 1 : 0;
}

Result copyDatabase(SqliteDatabase &database, const std::string &target,
                    const std::atomic<bool> &isCancelled)
{
    sqlite3_progress_handler(database.Handle(), operationsBetweenChecks, &stopWhenCancelled,
                             const_cast<std::atomic<bool> *>(&isCancelled));
    SqliteStatement copy(database, "VACUUM INTO ?1");
    copy.Bind(1, std::string_view(target));
    const Result copied = copy.Run();
    return isCancelled ? Result(Result::Cancelled, target) : copied;
}

} // namespace

std::vector<DatabaseFiles::File> DatabaseFiles::List() const
{
    std::vector<File> files;
    const std::set<Identity> open = openFiles();
    std::error_code error;
    for (fs::recursive_directory_iterator entry(m_directory, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code gone;
        if (!entry->is_regular_file(gone) || !isDatabase(entry->path().filename().string()))
            continue;
        files.push_back(describe(entry->path().string(), open));
        files.back().path = entry->path().lexically_relative(m_directory).generic_string();
    }
    std::sort(files.begin(), files.end(),
              [](const File &a, const File &b) { return a.path < b.path; });
    return files;
}

Result DatabaseFiles::resolve(const std::string &path, std::string &full) const
{
    std::error_code error;
    const fs::path root = fs::weakly_canonical(m_directory, error);
    const fs::path file = fs::weakly_canonical(root / path, error);
    const std::string inside = file.lexically_relative(root).generic_string();
    if (m_directory.empty() || inside.empty() || inside.compare(0, 2, "..") == 0 ||
        !isDatabase(file.filename().string()))
        return Result(Result::InvalidArgument, path + ": no database file of this station");
    full = file.string();
    return fs::is_regular_file(file, error) ? Result() : Result(Result::NotFound, full);
}

// The file is looked at again under a name that nobody knows: whoever opened it in between is seen,
// and nobody can open it afterwards.
Result DatabaseFiles::Delete(const std::string &path) const
{
    std::string file;
    if (const Result resolved = resolve(path, file); !resolved)
        return resolved;
    const Result isUsed(Result::Refused, file + " is in use");
    if (isOpen(file, openFiles()))
        return isUsed;
    const std::string aside = file + ".deleting";
    std::error_code error;
    fs::rename(file, aside, error);
    if (error)
        return Result(Result::StorageError, file + ": " + error.message());
    if (isOpen(aside, openFiles())) {
        fs::rename(aside, file, error);
        return isUsed;
    }
    for (const char *companion : companions)
        fs::remove(file + companion, error);
    fs::remove(aside, error);
    return error ? Result(Result::StorageError, aside + ": " + error.message()) : Result();
}

Result DatabaseFiles::Copy(const std::string &path, const std::string &target,
                           const std::atomic<bool> &isCancelled) const
{
    std::string file;
    if (const Result resolved = resolve(path, file); !resolved)
        return resolved;
    std::error_code error;
    if (fs::exists(target, error))
        return Result(Result::Duplicate, target);
    SqliteDatabase database;
    Result copied = database.Open(file, SqliteDatabase::Mode::ReadOnly);
    if (copied)
        copied = copyDatabase(database, target, isCancelled);
    const bool isDamaged = !copied && database.IsDamaged();
    database.Close();
    if (!copied)
        fs::remove(target, error);
    if (isDamaged && !isOpen(file, openFiles())) {
        fs::copy_file(file, target, error);
        copied = error ? Result(Result::StorageError, target + ": " + error.message()) : Result();
    }
    return copied;
}

} // namespace Nodes
