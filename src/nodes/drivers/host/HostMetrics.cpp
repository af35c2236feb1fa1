#include "nodes/drivers/host/HostMetrics.h"

#include "nodes/drivers/host/TextTable.h"
#include "nodes/values/NumberText.h"

#include <cmath>

namespace Nodes::HostMetrics {

namespace {

using Words = std::vector<std::string_view>;

/// Counters are whole and never negative; anything else is damage.
bool readCounter(const Words &words, std::size_t index, double &value)
{
    const auto number = index < words.size() ? ParseDouble(words[index]) : std::nullopt;
    if (!number || !(*number >= 0) || std::isinf(*number))
        return false;
    value = *number;
    return true;
}

} // namespace

std::optional<CpuTimes> ParseStat(std::string_view text)
{
    CpuTimes times;
    const bool isFound = FindLine(text, [&](std::string_view line) {
        const Words words = SplitWords(line);
        if (words.empty() || words[0] != "cpu")
            return false;
        // user nice system idle iowait irq softirq steal; guest time is part of user already.
        double fields[8] = {};
        for (std::size_t i = 0; i < 8; ++i) {
            if (!readCounter(words, i + 1, fields[i]))
                return false;
            times.total += fields[i];
        }
        times.user = fields[0] + fields[1];
        times.idle = fields[3];
        times.ioWait = fields[4];
        return true;
    });
    return isFound ? std::optional(times) : std::nullopt;
}

std::optional<double> ParseLoad(std::string_view text, int index)
{
    double load = 0;
    const bool isRead = readCounter(SplitWords(text), std::size_t(index), load);
    return isRead ? std::optional(load) : std::nullopt;
}

std::optional<double> ParseMemory(std::string_view text, std::string_view field)
{
    double kilobytes = 0;
    const bool isFound = FindLine(text, [&](std::string_view line) {
        const bool isField = line.size() > field.size() && line.substr(0, field.size()) == field &&
                             line[field.size()] == ':';
        return isField && readCounter(SplitWords(line.substr(field.size() + 1)), 0, kilobytes);
    });
    return isFound ? std::optional(kilobytes * 1024) : std::nullopt;
}

std::optional<Traffic> ParseDisk(std::string_view text, std::string_view device)
{
    constexpr double sectorBytes = 512; // in this file whatever the device's own sector size is
    Traffic traffic;
    const bool isFound = FindLine(text, [&](std::string_view line) {
        const Words words = SplitWords(line);
        return words.size() > 9 && words[2] == device && readCounter(words, 5, traffic.in) &&
               readCounter(words, 9, traffic.out);
    });
    traffic.in *= sectorBytes;
    traffic.out *= sectorBytes;
    return isFound ? std::optional(traffic) : std::nullopt;
}

std::optional<Traffic> ParseNet(std::string_view text, std::string_view interface)
{
    Traffic sum;
    bool isFound = false;
    FindLine(text, [&](std::string_view line) {
        const std::size_t colon = line.find(':');
        const Words name = SplitWords(line.substr(0, colon));
        if (colon == std::string_view::npos || name.size() != 1)
            return false;
        const bool isWanted = interface.empty() ? name[0] != "lo" : name[0] == interface;
        const Words counters = SplitWords(line.substr(colon + 1));
        Traffic one;
        if (isWanted && readCounter(counters, 0, one.in) && readCounter(counters, 8, one.out)) {
            sum.in += one.in;
            sum.out += one.out;
            isFound = true;
        }
        return false;
    });
    return isFound ? std::optional(sum) : std::nullopt;
}

std::optional<double> ParseUptime(std::string_view text)
{
    return ParseLoad(text, 0);
}

std::optional<ProcessUse> ParseSelfStat(std::string_view text)
{
    // The second field is the program's name in parentheses, which may hold blanks itself.
    const std::size_t nameEnd = text.rfind(')');
    if (nameEnd == std::string_view::npos)
        return std::nullopt;
    const Words words = SplitWords(text.substr(nameEnd + 1));
    double userTicks = 0;
    double systemTicks = 0;
    ProcessUse use;
    if (!readCounter(words, 11, userTicks) || !readCounter(words, 12, systemTicks) ||
        !readCounter(words, 21, use.rssPages))
        return std::nullopt;
    use.cpuTicks = userTicks + systemTicks;
    return use;
}

std::optional<std::string> ParseOsRelease(std::string_view text)
{
    constexpr std::string_view key = "PRETTY_NAME=";
    std::string name;
    FindLine(text, [&](std::string_view line) {
        if (line.substr(0, key.size()) != key)
            return false;
        line.remove_prefix(key.size());
        if (line.size() >= 2 && line.front() == '"' && line.back() == '"')
            line = line.substr(1, line.size() - 2);
        name = line;
        return true;
    });
    return name.empty() ? std::nullopt : std::optional(name);
}

} // namespace Nodes::HostMetrics
