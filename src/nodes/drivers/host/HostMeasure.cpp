#include "nodes/drivers/host/HostMetrics.h"

namespace Nodes::HostMetrics {

namespace {

Result unreadable(const char *file)
{
    return Result(Result::ParseError, std::string(file) + " does not read");
}

Result unknownTarget(const std::string &target)
{
    return Result(Result::NotFound, "no such device on this machine: '" + target + "'");
}

SignalValue valueOr(const std::optional<double> &number, const Result &error)
{
    return number ? SignalValue(*number) : SignalValue(error);
}

double seconds(const HostSnapshot &now, const HostSnapshot &before)
{
    return double(now.steady - before.steady) / 1e6;
}

/// Growth a second; empty when time stands still or the counter was reset.
SignalValue rate(double now, double before, double elapsed)
{
    return elapsed > 0 && now >= before ? SignalValue((now - before) / elapsed) : SignalValue();
}

SignalValue cpu(HostMetric metric, const HostSnapshot &now, const HostSnapshot *before)
{
    const auto last = ParseStat(now.stat);
    if (!last)
        return unreadable("/proc/stat");
    const auto first = before ? ParseStat(before->stat) : std::nullopt;
    if (!first)
        return SignalValue();
    const double total = last->total - first->total;
    const double idle = (last->idle - first->idle) + (last->ioWait - first->ioWait);
    const double part = metric == HostMetric::CpuTotal  ? total - idle
                        : metric == HostMetric::CpuUser ? last->user - first->user
                                                        : last->ioWait - first->ioWait;
    return total > 0 && part >= 0 ? SignalValue(100 * part / total) : SignalValue();
}

SignalValue memory(HostMetric metric, const std::string &text)
{
    const bool isSwap = metric == HostMetric::SwapUsed;
    const auto total = ParseMemory(text, isSwap ? "SwapTotal" : "MemTotal");
    const auto free = ParseMemory(text, isSwap ? "SwapFree" : "MemAvailable");
    if (!total || !free || *free > *total)
        return unreadable("/proc/meminfo");
    if (metric == HostMetric::MemoryAvailable)
        return *free;
    if (metric == HostMetric::MemoryUsedBytes)
        return *total - *free;
    return *total > 0 ? 100 * (*total - *free) / *total : 0.0;
}

using TrafficParser = std::optional<Traffic> (*)(std::string_view, std::string_view);

SignalValue traffic(TrafficParser parse, const std::string HostSnapshot::*file, bool isIn,
                    const std::string &target, const HostSnapshot &now, const HostSnapshot *before)
{
    const auto last = parse(now.*file, target);
    if (!last)
        return unknownTarget(target);
    const auto first = before ? parse(before->*file, target) : std::nullopt;
    if (!first)
        return SignalValue();
    const double elapsed = seconds(now, *before);
    return isIn ? rate(last->in, first->in, elapsed) : rate(last->out, first->out, elapsed);
}

SignalValue process(HostMetric metric, const HostSnapshot &now, const HostSnapshot *before)
{
    const auto last = ParseSelfStat(now.selfStat);
    if (!last)
        return unreadable("/proc/self/stat");
    if (metric == HostMetric::ProcessRss)
        return last->rssPages * double(now.pageSize);
    const auto first = before ? ParseSelfStat(before->selfStat) : std::nullopt;
    if (!first)
        return SignalValue();
    const double percentTicks = double(now.ticksPerSecond) / 100;
    return rate(last->cpuTicks / percentTicks, first->cpuTicks / percentTicks,
                seconds(now, *before));
}

SignalValue load(HostMetric metric, const HostSnapshot &now)
{
    const int index = int(metric) - int(HostMetric::Load1);
    return valueOr(ParseLoad(now.loadavg, index), unreadable("/proc/loadavg"));
}

SignalValue records(HostMetric metric, const HostSnapshot &now)
{
    const StoreHealth &journal = now.journal;
    switch (metric) {
    case HostMetric::JournalWaiting:
        return double(journal.waiting);
    case HostMetric::JournalAside:
        return double(journal.aside);
    case HostMetric::JournalLost:
        return double(journal.lost);
    case HostMetric::JournalTrouble:
        return double(journal.troubledFor) / 1e6;
    case HostMetric::ArchiveAside:
        return double(now.archive.packets.aside);
    case HostMetric::ArchiveLost:
        return double(now.archive.lost);
    case HostMetric::ArchiveTrouble:
        return double(now.archive.packets.troubledFor) / 1e6;
    default:
        return double(now.alarmsUnkept);
    }
}

SignalValue osRelease(const HostSnapshot &now)
{
    const auto name = ParseOsRelease(now.osRelease);
    return name ? SignalValue(*name) : SignalValue(unreadable("/etc/os-release"));
}

} // namespace

SignalValue Measure(HostMetric metric, const std::string &target, const HostSnapshot &now,
                    const HostSnapshot *before)
{
    switch (metric) {
    case HostMetric::CpuTotal:
    case HostMetric::CpuUser:
    case HostMetric::CpuIoWait:
        return cpu(metric, now, before);
    case HostMetric::Load1:
    case HostMetric::Load5:
    case HostMetric::Load15:
        return load(metric, now);
    case HostMetric::MemoryUsed:
    case HostMetric::MemoryUsedBytes:
    case HostMetric::MemoryAvailable:
    case HostMetric::SwapUsed:
        return memory(metric, now.meminfo);
    case HostMetric::DiskRead:
    case HostMetric::DiskWrite:
        return traffic(&ParseDisk, &HostSnapshot::diskstats, metric == HostMetric::DiskRead, target,
                       now, before);
    case HostMetric::NetReceived:
    case HostMetric::NetSent:
        return traffic(&ParseNet, &HostSnapshot::netdev, metric == HostMetric::NetReceived, target,
                       now, before);
    case HostMetric::Uptime:
        return valueOr(ParseUptime(now.uptime), unreadable("/proc/uptime"));
    case HostMetric::ProcessCount:
        return now.processCount;
    case HostMetric::ProcessRss:
    case HostMetric::ProcessCpu:
        return process(metric, now, before);
    case HostMetric::HostName:
        return now.hostName;
    case HostMetric::OsRelease:
        return osRelease(now);
    case HostMetric::JournalWaiting:
    case HostMetric::JournalAside:
    case HostMetric::JournalLost:
    case HostMetric::JournalTrouble:
    case HostMetric::AlarmsUnkept:
    case HostMetric::ArchiveAside:
    case HostMetric::ArchiveLost:
    case HostMetric::ArchiveTrouble:
        return records(metric, now);
    default:
        return Result(Result::InvalidArgument,
                      "no metric is chosen, or it is unknown: " + std::to_string(int(metric)));
    }
}

} // namespace Nodes::HostMetrics
