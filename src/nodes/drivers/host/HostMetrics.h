#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/recording/ArchiveHealth.h"
#include "nodes/storage/StoreHealth.h"
#include "nodes/values/SignalValue.h"

#include <optional>
#include <string>
#include <string_view>

namespace Nodes {

/// What can be measured of the machine this station runs on. Codes are stored in properties.
enum class HostMetric {
    None = 0,
    CpuTotal,  ///< busy time of all processors together, %
    CpuUser,   ///< %
    CpuIoWait, ///< %
    Load1,     ///< run queue, averaged over 1, 5, 15 minutes
    Load5,
    Load15,
    MemoryUsed, ///< %
    MemoryUsedBytes,
    MemoryAvailable, ///< bytes
    SwapUsed,        ///< %; 0 without swap
    DiskUsed,        ///< of the file system that holds the path `target`, %
    DiskRead,        ///< of the block device `target`, bytes/s
    DiskWrite,
    NetReceived, ///< of the interface `target` ("": all but the loopback), bytes/s
    NetSent,
    Uptime, ///< s
    ProcessCount,
    ProcessRss,     ///< of this process, bytes
    ProcessCpu,     ///< of this process, % of one processor
    HostName,       ///< text
    OsRelease,      ///< text
    JournalWaiting, ///< entries of the journal in memory only
    JournalAside,   ///< entries in spill files
    JournalLost,    ///< entries lost since the start
    JournalTrouble, ///< for how long entries have not got into the journal, s; 0: they do
    AlarmsUnkept,   ///< alarms whose latest state is not on the disk
    ArchiveAside,   ///< groups of samples in spill files
    ArchiveLost,    ///< samples lost since the start
    ArchiveTrouble, ///< for how long samples have not got into the archive, s; 0: they do
    Last = ArchiveTrouble
};

/// Texts of the kernel's files and what else was asked of it at one moment.
struct HostSnapshot
{
    Timestamp steady = 0;  ///< microseconds
    std::string stat;      ///< /proc/stat
    std::string loadavg;   ///< /proc/loadavg
    std::string meminfo;   ///< /proc/meminfo
    std::string diskstats; ///< /proc/diskstats
    std::string netdev;    ///< /proc/net/dev
    std::string uptime;    ///< /proc/uptime
    std::string selfStat;  ///< /proc/self/stat
    std::string osRelease; ///< /etc/os-release
    std::string hostName;
    StoreHealth journal;
    std::size_t alarmsUnkept = 0;
    ArchiveHealth archive;
    unsigned long processCount = 0;
    unsigned long pageSize = 4096; ///< bytes
    unsigned long ticksPerSecond = 100;
};

/// Pure reading of the kernel's texts. Every function takes damaged text and then has no answer.
namespace HostMetrics {

/// Processor time in ticks since boot, all processors together.
struct CpuTimes
{
    double total = 0;
    double idle = 0; ///< without waiting for disks
    double user = 0;
    double ioWait = 0;
};
/// Bytes since boot.
struct Traffic
{
    double in = 0;  ///< read, received
    double out = 0; ///< written, sent
};
/// This process.
struct ProcessUse
{
    double cpuTicks = 0;
    double rssPages = 0;
};

NODES_EXPORT std::optional<CpuTimes> ParseStat(std::string_view text);
/// `index` 0, 1, 2 for 1, 5, 15 minutes.
NODES_EXPORT std::optional<double> ParseLoad(std::string_view text, int index);
/// Bytes of one line of /proc/meminfo, such as "MemTotal".
NODES_EXPORT std::optional<double> ParseMemory(std::string_view text, std::string_view field);
NODES_EXPORT std::optional<Traffic> ParseDisk(std::string_view text, std::string_view device);
NODES_EXPORT std::optional<Traffic> ParseNet(std::string_view text, std::string_view interface);
NODES_EXPORT std::optional<double> ParseUptime(std::string_view text);
NODES_EXPORT std::optional<ProcessUse> ParseSelfStat(std::string_view text);
/// PRETTY_NAME of /etc/os-release without its quotes.
NODES_EXPORT std::optional<std::string> ParseOsRelease(std::string_view text);

/// The metric at `now`; rates are taken over the time since `before`. Empty while a rate has no
/// usable earlier reading; an error value for an unknown metric, a target that does not exist and
/// a text that does not read. DiskUsed is not answered here: it asks the file system.
NODES_EXPORT SignalValue Measure(HostMetric metric, const std::string &target,
                                 const HostSnapshot &now, const HostSnapshot *before);

} // namespace HostMetrics

} // namespace Nodes
