#include "nodes/storage/DamagedFiles.h"

#include "nodes/values/Clock.h"

#include <algorithm>
#include <ctime>
#include <filesystem>

namespace Nodes {

namespace fs = std::filesystem;

namespace {

constexpr const char *mark = ".damaged-";

} // namespace

std::string DamagedFiles::FreshName(const std::string &file)
{
    const std::time_t now = Clock::Current().Now() / 1000000;
    std::tm utc{};
    gmtime_r(&now, &utc);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y%m%dT%H%M%SZ", &utc);
    const std::string base = file + mark + stamp;
    std::string name = base;
    std::error_code error;
    for (int number = 2; fs::exists(name, error); ++number)
        name = base + "-" + std::to_string(number);
    return name;
}

std::vector<std::string> DamagedFiles::KeepNewest(const std::string &file, std::size_t count)
{
    const fs::path directory = fs::path(file).parent_path();
    const std::string start = fs::path(file).filename().string() + mark;
    std::vector<std::pair<fs::file_time_type, std::string>> copies;
    std::error_code error;
    for (fs::directory_iterator entry(directory.empty() ? "." : directory, error), end;
         !error && entry != end; entry.increment(error)) {
        std::error_code gone;
        if (entry->path().filename().string().compare(0, start.size(), start) == 0)
            copies.emplace_back(entry->last_write_time(gone), entry->path().string());
    }
    std::sort(copies.rbegin(), copies.rend());
    std::vector<std::string> removed;
    for (std::size_t i = count; i < copies.size(); ++i) {
        if (fs::remove(copies[i].second, error))
            removed.push_back(copies[i].second);
    }
    return removed;
}

} // namespace Nodes
