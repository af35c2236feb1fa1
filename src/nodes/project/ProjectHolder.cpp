#include "nodes/project/ProjectHolder.h"

#include "nodes/values/Clock.h"
#include "nodes/values/NumberText.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <ctime>

#include <pwd.h>
#include <unistd.h>

namespace Nodes {

namespace {

constexpr std::string_view signature = "operator station project hold 1";

std::string userName()
{
    std::array<char, 4096> buffer{};
    passwd entry{};
    passwd *found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found)
        return found->pw_name;
    return std::to_string(::getuid());
}

/// The next line of the text, without what could disturb a line of a screen.
std::string takeLine(std::string_view &text)
{
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string line(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    line.erase(std::remove_if(line.begin(), line.end(),
                              [](char c) { return static_cast<unsigned char>(c) < 0x20; }),
               line.end());
    return line;
}

} // namespace

ProjectHolder ProjectHolder::Myself()
{
    std::array<char, HOST_NAME_MAX + 1> host{};
    (void)::gethostname(host.data(), host.size() - 1);
    return {userName(), host.data(), long(::getpid()), Clock::Current().Now()};
}

ProjectHolder ProjectHolder::FromText(std::string_view text)
{
    if (takeLine(text) != signature)
        return {};
    ProjectHolder holder;
    holder.user = takeLine(text);
    holder.host = takeLine(text);
    holder.process = long(ParseInteger(takeLine(text)).value_or(0));
    holder.since = Timestamp(ParseInteger(takeLine(text)).value_or(0));
    return holder;
}

std::string ProjectHolder::ToText() const
{
    return std::string(signature) + "\n" + user + "\n" + host + "\n" + std::to_string(process) +
           "\n" + std::to_string(since) + "\n";
}

std::string ProjectHolder::ToWords() const
{
    const std::time_t seconds = since / 1000000;
    std::tm local{};
    std::array<char, 32> time{};
    ::localtime_r(&seconds, &local);
    (void)std::strftime(time.data(), time.size(), "%d.%m.%Y %H:%M", &local);
    return (user.empty() ? "неизвестный пользователь" : user) +
           (host.empty() ? std::string() : " на " + host) + " с " + time.data() + " (процесс " +
           std::to_string(process) + ")";
}

} // namespace Nodes
