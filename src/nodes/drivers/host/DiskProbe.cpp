#include "nodes/drivers/host/DiskProbe.h"

#include "nodes/drivers/host/HostProbe.h"
#include "nodes/drivers/host/TextTable.h"

#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <system_error>
#include <thread>

namespace Nodes {

namespace {

constexpr std::chrono::milliseconds sharedPatience(500);

/// Blanks and backslashes of a mount point are written as three octal digits.
std::string unescaped(std::string_view text)
{
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 3 >= text.size()) {
            plain += text[i];
            continue;
        }
        plain += char((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0'));
        i += 3;
    }
    return plain;
}

bool holds(const std::string &mount, const std::string &path)
{
    const bool isPrefix = path.compare(0, mount.size(), mount) == 0;
    return isPrefix &&
           (path.size() == mount.size() || mount.back() == '/' || path[mount.size()] == '/');
}

} // namespace

std::string HostMetrics::FindMount(std::string_view mounts, const std::string &path)
{
    std::string longest = "/";
    FindLine(mounts, [&](std::string_view line) {
        const std::vector<std::string_view> words = SplitWords(line);
        if (words.size() < 2)
            return false;
        std::string mount = unescaped(words[1]);
        if (!mount.empty() && mount.size() > longest.size() && holds(mount, path))
            longest = std::move(mount);
        return false;
    });
    return longest;
}

/// Shared with the thread that asks, which may outlive the probe.
struct DiskProbe::Mount
{
    std::mutex mutex;
    std::condition_variable changed;
    bool isBusy = false;
    bool isHanging = false;

    /// False when it did not come true in time: what is being asked hangs.
    template <class Condition>
    bool wait(std::unique_lock<std::mutex> &lock, std::chrono::steady_clock::time_point until,
              Condition condition)
    {
        isHanging = isHanging || !changed.wait_until(lock, until, condition);
        return !isHanging;
    }
};

DiskProbe::DiskProbe(Question question, std::chrono::milliseconds patience)
    : m_question(std::move(question)), m_patience(patience)
{
}

DiskProbe &DiskProbe::Shared()
{
    static DiskProbe shared(&HostProbe::DiskUsed, sharedPatience);
    return shared;
}

std::shared_ptr<DiskProbe::Mount> DiskProbe::mountOf(const std::string &path)
{
    std::ifstream file("/proc/self/mounts");
    const std::string mounts{std::istreambuf_iterator<char>(file),
                             std::istreambuf_iterator<char>()};
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    const std::string point = HostMetrics::FindMount(mounts, absolute.lexically_normal().string());
    const std::lock_guard lock(m_mutex);
    std::shared_ptr<Mount> &mount = m_mounts[point];
    if (!mount)
        mount = std::make_shared<Mount>();
    return mount;
}

SignalValue DiskProbe::Used(const std::string &path)
{
    const Result hangs(Result::Timeout, "file system of '" + path + "' does not answer");
    const auto until = std::chrono::steady_clock::now() + m_patience;
    const std::shared_ptr<Mount> mount = mountOf(path);
    std::unique_lock lock(mount->mutex);
    if (!mount->wait(lock, until, [&] { return !mount->isBusy; }))
        return hangs;
    const auto answer = std::make_shared<std::optional<SignalValue>>();
    try {
        std::thread([mount, answer, path, question = m_question] {
            SignalValue value = question(path);
            const std::lock_guard done(mount->mutex);
            *answer = std::move(value);
            mount->isBusy = mount->isHanging = false;
            mount->changed.notify_all();
        }).detach();
    } catch (const std::system_error &error) {
        return Result(Result::Failed, std::string("no thread to ask with: ") + error.what());
    }
    mount->isBusy = true;
    const bool isAnswered = mount->wait(lock, until, [&] { return answer->has_value(); });
    return isAnswered ? **answer : SignalValue(hangs);
}

} // namespace Nodes
