#include "apps/common/process/StandardStreams.h"

#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Host {

void StandardStreams::outliveReaders()
{
    std::signal(SIGPIPE, SIG_IGN);
    struct stat status = {};
    if (::fstat(STDERR_FILENO, &status) != 0 ||
        !(S_ISFIFO(status.st_mode) || ::isatty(STDERR_FILENO)))
        return;
    // Opened anew, because the way of writing is shared by all who inherited the old descriptor.
    const int own = ::open("/proc/self/fd/2", O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (own < 0)
        return;
    ::dup2(own, STDERR_FILENO);
    ::close(own);
}

} // namespace Host
