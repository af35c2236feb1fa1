#include "nodes/serial/AtomicFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Nodes {

namespace fs = std::filesystem;

namespace {

Result failure(const std::string &path, const char *step)
{
    return Result(Result::StorageError, path + ": " + step + ": " + std::strerror(errno));
}

/// Temporary file that is gone again unless it is renamed into place.
class TemporaryFile
{
public:
    explicit TemporaryFile(const std::string &target) : m_path(target + ".XXXXXX")
    {
        m_descriptor = ::mkostemp(m_path.data(), O_CLOEXEC);
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

// By a second name for the old file, so that there is no moment without it; file systems without
// hard links get a copy.
bool keepBackup(const std::string &path)
{
    const std::string backup = path + ".bak";
    const std::string fresh = backup + ".new";
    std::error_code error;
    if (!fs::exists(path, error))
        return true;
    fs::remove(fresh, error);
    fs::create_hard_link(path, fresh, error);
    if (error)
        fs::copy_file(path, fresh, fs::copy_options::overwrite_existing, error);
    if (!error)
        fs::rename(fresh, backup, error);
    errno = error.value();
    return !error;
}

bool syncDirectory(const std::string &path)
{
    const std::string directory = fs::path(path).parent_path().string();
    // A new file named without a directory stands in the working one.
    const int descriptor =
        ::open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
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

} // namespace Nodes
