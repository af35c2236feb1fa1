#include "apps/common/process/ProcessLock.h"

#include "apps/common/process/ProgramName.h"

#include <cerrno>
#include <climits>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Host {

namespace {

using Nodes::Result;

constexpr mode_t fileRights = 0640;

std::string fileIn(const std::string &directory)
{
    return directory + "/station.lock";
}

/// -1 when there is no such file and none can be made.
int openLockFile(const std::string &file)
{
    const int writable =
        ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, fileRights);
    // A lock can be held on a file that can only be read as well.
    return writable >= 0 ? writable : ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
}

/// 0, or the error.
int lock(int descriptor)
{
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EINTR)
            return errno;
    }
    return 0;
}

/// Who wrote the file: process, program and machine, a line each. Whatever else it holds names
/// nobody.
std::string holderIn(const std::string &file)
{
    char text[512] = {};
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    const ssize_t size = descriptor < 0 ? 0 : ::read(descriptor, text, sizeof text - 1);
    if (descriptor >= 0)
        ::close(descriptor);
    const std::string first(text, size > 0 ? std::strcspn(text, "\n") : 0);
    const bool isNumber =
        !first.empty() && first.find_first_not_of("0123456789") == std::string::npos;
    return isNumber ? "process " + first : "another process";
}

void closeOne(int &descriptor)
{
    if (descriptor >= 0)
        ::close(descriptor);
    descriptor = -1;
}

} // namespace

ProcessLock::~ProcessLock()
{
    release();
}

void ProcessLock::release()
{
    if (m_file >= 0)
        (void)!::ftruncate(m_file, 0);
    closeOne(m_file);
    closeOne(m_directory);
}

Result ProcessLock::take(const std::string &directory)
{
    release();
    m_path = directory;
    m_directory = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_directory < 0)
        return {Result::StorageError,
                "cannot open the data directory \"" + directory + "\": " + std::strerror(errno)};
    const std::string file = fileIn(directory);
    m_file = openLockFile(file);
    const int fileError = m_file < 0 ? ENOENT : lock(m_file);
    // Some file systems lock files only; the file then is enough.
    const int directoryError = lock(m_directory);
    const bool isTaken = fileError == EWOULDBLOCK || directoryError == EWOULDBLOCK;
    if (!isTaken && (fileError == 0 || directoryError == 0)) {
        signFile();
        return {};
    }
    closeOne(m_file); // of somebody else, whose signature stays
    closeOne(m_directory);
    if (isTaken)
        return {Result::Refused, "the data directory \"" + directory + "\" is used by " +
                                     holderIn(file) +
                                     "; end that program or name another directory with --data"};
    return {Result::StorageError, "the data directory \"" + directory +
                                      "\" cannot be locked: " + std::strerror(directoryError)};
}

// A full disk leaves the file empty, which is no harm.
void ProcessLock::signFile() const
{
    if (m_file < 0)
        return;
    char host[HOST_NAME_MAX + 1] = {};
    (void)::gethostname(host, sizeof host - 1);
    const std::string text = std::to_string(::getpid()) + '\n' + ProgramName() + '\n' + host + "\n";
    if (::ftruncate(m_file, 0) == 0)
        (void)!::pwrite(m_file, text.data(), text.size(), 0);
}

bool ProcessLock::isStillThere() const
{
    struct stat held = {}, found = {};
    return m_directory >= 0 && ::fstat(m_directory, &held) == 0 &&
           ::stat(m_path.c_str(), &found) == 0 && held.st_dev == found.st_dev &&
           held.st_ino == found.st_ino;
}

} // namespace Host
