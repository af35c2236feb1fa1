#include "nodes/drivers/host/HostProbe.h"

#include "nodes/values/Clock.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include <sys/statvfs.h>
#include <unistd.h>

namespace Nodes::HostProbe {

namespace {

std::string fileText(const char *path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

unsigned long countProcesses()
{
    unsigned long count = 0;
    std::error_code error;
    for (std::filesystem::directory_iterator entry("/proc", error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        count += std::all_of(name.begin(), name.end(),
                             [](unsigned char c) { return std::isdigit(c) != 0; });
    }
    return count;
}

std::string hostName()
{
    char name[HOST_NAME_MAX + 1] = {};
    return ::gethostname(name, sizeof name - 1) == 0 ? name : "";
}

} // namespace

HostSnapshot Take()
{
    HostSnapshot snapshot;
    snapshot.steady = Clock::Current().Steady();
    snapshot.stat = fileText("/proc/stat");
    snapshot.loadavg = fileText("/proc/loadavg");
    snapshot.meminfo = fileText("/proc/meminfo");
    snapshot.diskstats = fileText("/proc/diskstats");
    snapshot.netdev = fileText("/proc/net/dev");
    snapshot.uptime = fileText("/proc/uptime");
    snapshot.selfStat = fileText("/proc/self/stat");
    snapshot.osRelease = fileText("/etc/os-release");
    snapshot.hostName = hostName();
    snapshot.processCount = countProcesses();
    snapshot.pageSize = static_cast<unsigned long>(::sysconf(_SC_PAGESIZE));
    snapshot.ticksPerSecond = static_cast<unsigned long>(::sysconf(_SC_CLK_TCK));
    return snapshot;
}

SignalValue DiskUsed(const std::string &path)
{
    struct statvfs state;
    if (::statvfs(path.c_str(), &state) != 0)
        return Result(Result::NotFound,
                      "file system of '" + path + "': " + std::generic_category().message(errno));
    const double used = double(state.f_blocks) - double(state.f_bfree);
    const double usable = used + double(state.f_bavail);
    if (!(usable > 0))
        return Result(Result::NotAvailable, "file system of '" + path + "' has no blocks");
    return 100 * used / usable;
}

} // namespace Nodes::HostProbe
