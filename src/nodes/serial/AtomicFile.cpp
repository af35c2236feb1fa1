#include "nodes/serial/AtomicFile.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Nodes {

namespace fs = std::filesystem;

namespace {

Result failure(const std::string &path, const char *step)
{
    return Result(Result::StorageError, path + ": " + step + ": " + std::strerror(errno));
}

// Six letters or digits stand between the file's name and this: what is removed later must not be
// mistaken for a copy that somebody has made by hand.
constexpr std::string_view unfinished = ".saving";
constexpr const char *unfinishedBackup = ".bak.new";

/// Temporary file that is gone again unless it is renamed into place. The kernel locks it for as
/// long as its writer lives.
class TemporaryFile
{
public:
    explicit TemporaryFile(const std::string &target)
        : m_path(target + ".XXXXXX" + std::string(unfinished))
    {
        m_descriptor = ::mkostemps(m_path.data(), int(unfinished.size()), O_CLOEXEC);
        (void)::flock(m_descriptor, LOCK_EX | LOCK_NB); // where the file system can
    }
    ~TemporaryFile()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        if (!m_isInPlace)
            ::unlink(m_path.c_str());
    }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    bool IsOpen() const { return m_descriptor >= 0; }
    bool TakeModeOf(const std::string &target)
    {
        struct stat old
        {
        };
        const bool exists = ::stat(target.c_str(), &old) == 0;
        // Who shares the project by a group keeps it, where that group is one of the writer's.
        if (exists)
            (void)!::fchown(m_descriptor, uid_t(-1), old.st_gid);
        return ::fchmod(m_descriptor, exists ? old.st_mode & 07777 : 0644) == 0;
    }
    bool Write(std::string_view bytes)
    {
        while (!bytes.empty()) {
            const ssize_t written = ::write(m_descriptor, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR)
                continue;
            if (written < 0)
                return false;
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }
    bool Sync() { return ::fsync(m_descriptor) == 0; }
    bool MoveTo(const std::string &target)
    {
        m_isInPlace = ::rename(m_path.c_str(), target.c_str()) == 0;
        return m_isInPlace;
    }

private:
    std::string m_path;
    int m_descriptor = -1;
    bool m_isInPlace = false;
};

bool syncFile(const std::string &path)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool isSynced = descriptor >= 0 && ::fsync(descriptor) == 0;
    const int error = errno;
    if (descriptor >= 0)
        ::close(descriptor);
    errno = error;
    return isSynced;
}

bool copyFile(const std::string &from, const std::string &to)
{
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
    errno = error.value();
    return !error && syncFile(to);
}

// By a second name for the old file, so that there is no moment without it; file systems without
// hard links get a copy.
bool keepBackup(const std::string &path)
{
    const std::string fresh = path + unfinishedBackup;
    std::error_code error;
    if (!fs::exists(path, error))
        return true;
    fs::remove(fresh, error);
    fs::create_hard_link(path, fresh, error);
    const bool isMade = !error || copyFile(path, fresh);
    if (isMade && ::rename(fresh.c_str(), (path + ".bak").c_str()) == 0)
        return true;
    const int reason = errno;
    fs::remove(fresh, error); // half of a copy helps nobody, and takes room
    errno = reason;
    return false;
}

bool isUnfinished(std::string_view name, std::string_view stem)
{
    constexpr std::size_t letters = 6;
    return name.size() == stem.size() + letters + unfinished.size() &&
           name.substr(0, stem.size()) == stem &&
           name.substr(stem.size() + letters) == unfinished &&
           std::all_of(name.begin() + stem.size(), name.begin() + stem.size() + letters,
                       [](unsigned char c) { return std::isalnum(c); });
}

bool hasLivingWriter(const std::string &path)
{
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0)
        return true;
    const bool isFree = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    ::close(descriptor);
    return !isFree;
}

bool syncDirectory(const std::string &path)
{
    const std::string directory = fs::path(path).parent_path().string();
    // A new file named without a directory stands in the working one.
    const int descriptor =
        ::open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return errno == EACCES; // may be written, not read
    // Some network file systems cannot sync directories; the rename itself has succeeded.
    const bool isSynced = ::fsync(descriptor) == 0 || errno == EINVAL;
    ::close(descriptor);
    return isSynced;
}

} // namespace

Result ReplaceFile(const std::string &path, std::string_view bytes)
{
    std::error_code error;
    const std::string target = fs::weakly_canonical(path, error).string();
    if (error || target.empty())
        return Result(Result::StorageError, path + ": " + error.message());
    TemporaryFile file(target);
    if (!file.IsOpen())
        return failure(path, "cannot create a temporary file");
    if (!file.TakeModeOf(target) || !file.Write(bytes) || !file.Sync())
        return failure(path, "cannot write");
    if (!keepBackup(target))
        return failure(path, "cannot keep the previous version");
    if (!file.MoveTo(target))
        return failure(path, "cannot replace");
    return syncDirectory(target) ? Result() : failure(path, "cannot sync the directory");
}

bool RemoveLeftovers(const std::string &path)
{
    std::error_code error;
    const fs::path target = fs::weakly_canonical(path, error);
    if (error || target.empty())
        return true;
    bool isIdle = true;
    const std::string stem = target.filename().string() + ".";
    for (const fs::directory_entry &entry : fs::directory_iterator(target.parent_path(), error)) {
        const std::string name = entry.path().filename().string();
        if (!isUnfinished(name, stem) || !fs::is_regular_file(entry.symlink_status(error)))
            continue;
        if (hasLivingWriter(entry.path().string()))
            isIdle = false;
        else
            fs::remove(entry.path(), error);
    }
    if (isIdle)
        fs::remove(target.string() + unfinishedBackup, error);
    return isIdle;
}

} // namespace Nodes
