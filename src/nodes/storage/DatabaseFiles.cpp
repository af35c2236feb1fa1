#include "nodes/storage/DatabaseFiles.h"

#include "nodes/storage/DatabaseCopy.h"
#include "nodes/storage/OpenFiles.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

namespace Nodes {

namespace fs = std::filesystem;

namespace {

constexpr const char *companions[] = {"-wal", "-shm", "-journal"};

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

DatabaseFiles::File describe(const std::string &file, const OpenFiles &open)
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
    described.isInUse = open.Has(file);
    return described;
}

} // namespace

std::vector<std::string> DatabaseFiles::ListPaths() const
{
    std::vector<std::string> paths;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(m_directory, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code gone;
        const std::string path = entry->path().lexically_relative(m_directory).generic_string();
        if (entry->is_regular_file(gone) && isDatabase(entry->path().filename().string()) &&
            isListed(path))
            paths.push_back(path);
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::vector<DatabaseFiles::File> DatabaseFiles::List() const
{
    std::vector<File> files;
    const OpenFiles open;
    for (const std::string &path : ListPaths()) {
        files.push_back(describe((fs::path(m_directory) / path).string(), open));
        files.back().path = path;
    }
    return files;
}

bool DatabaseFiles::isListed(const std::string &path) const
{
    const auto begins = [&](const std::string &beginning) {
        return path.compare(0, beginning.size(), beginning) == 0;
    };
    return begins(m_beginning) && std::none_of(m_others.begin(), m_others.end(), begins);
}

Result DatabaseFiles::resolve(const std::string &path, std::string &full) const
{
    std::error_code error;
    const fs::path root = fs::weakly_canonical(m_directory, error);
    const fs::path file = fs::weakly_canonical(root / path, error);
    const std::string inside = file.lexically_relative(root).generic_string();
    if (m_directory.empty() || inside.empty() || inside.compare(0, 2, "..") == 0 ||
        !isDatabase(file.filename().string()) || !isListed(inside))
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
    if (OpenFiles().Has(file))
        return isUsed;
    const std::string aside = file + ".deleting";
    std::error_code error;
    fs::rename(file, aside, error);
    if (error)
        return Result(Result::StorageError, file + ": " + error.message());
    if (OpenFiles().Has(aside)) {
        fs::rename(aside, file, error);
        return isUsed;
    }
    for (const char *companion : companions)
        fs::remove(file + companion, error);
    fs::remove(aside, error);
    return error ? Result(Result::StorageError, aside + ": " + error.message()) : Result();
}

Result DatabaseFiles::MakeCopy(const std::string &path, const std::string &target,
                               std::unique_ptr<DatabaseCopy> &copy) const
{
    std::string file;
    const Result resolved = resolve(path, file);
    if (resolved)
        copy = std::make_unique<DatabaseCopy>(file, target);
    return resolved;
}

} // namespace Nodes
