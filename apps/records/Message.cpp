#include "apps/records/Message.h"

#include "apps/common/process/ProgramName.h"

#include <cstdio>

#include <unistd.h>

namespace Records {

namespace {

bool isShowingProgress = false;

} // namespace

void Message::tell(const std::string &text)
{
    progress({});
    std::fprintf(stderr, "%s: %s\n", Host::ProgramName().c_str(), text.c_str());
}

bool Message::check(const Nodes::Result &result)
{
    if (!result)
        tell(result.GetDetail().empty() ? result.ToString() : result.GetDetail());
    return bool(result);
}

void Message::progress(const std::string &text)
{
    if (text.empty() && !isShowingProgress)
        return;
    static const bool isSeen = ::isatty(STDERR_FILENO) != 0;
    if (!isSeen)
        return;
    // Erases what was left of a longer one.
    std::fprintf(stderr, "\r%s\x1b[K", text.c_str());
    std::fflush(stderr);
    isShowingProgress = !text.empty();
}

} // namespace Records
