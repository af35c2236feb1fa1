#include "nodes/project/RecoveryWriter.h"

#include "nodes/serial/AtomicFile.h"
#include "nodes/serial/ProjectWriter.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Nodes {

namespace {

constexpr unsigned patience = 300; // s; a copy that hangs on a disk must not stay for ever
constexpr int politeness = 10;     // nice

std::string readAll(int pipe)
{
    std::string text;
    std::array<char, 512> portion{};
    for (;;) {
        const ssize_t size = ::read(pipe, portion.data(), portion.size());
        if (size > 0)
            text.append(portion.data(), std::size_t(size));
        else if (size == 0 || errno != EINTR)
            return text;
    }
}

} // namespace

RecoveryWriter::~RecoveryWriter()
{
    if (!IsRunning())
        return;
    ::kill(m_child, SIGKILL);
    (void)Finish();
    RemoveLeftovers(m_file);
}

Result RecoveryWriter::Start(const NodesCollection &project, const RecoveryInfo &info)
{
    if (IsRunning())
        return {Result::NotAvailable, "a write is under way"};
    m_file = info.file;
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return {Result::NotAvailable, std::string("no pipe: ") + std::strerror(errno)};
    m_child = ::fork();
    if (m_child == 0)
        write(project, info, ends[1]);
    ::close(ends[1]);
    m_pipe = ends[0];
    if (m_child > 0)
        return {};
    const Result failed(Result::NotAvailable, std::string("cannot fork: ") + std::strerror(errno));
    ::close(m_pipe);
    m_pipe = -1;
    return failed;
}

// Only this thread goes on in the copy. Its locks of memory are in order, which the C library sees
// to; nothing else that other threads could hold is used here, and the alarm ends what hangs.
void RecoveryWriter::write(const NodesCollection &project, const RecoveryInfo &info, int pipe)
{
    for (const int signal : {SIGALRM, SIGTERM, SIGINT, SIGHUP})
        std::signal(signal, SIG_DFL);
    ::alarm(patience);
    (void)::setpriority(PRIO_PROCESS, 0, politeness);
    const Result written = RecoveryFile::Write(info, ProjectWriter::ToText(project));
    const std::string answer = written ? "done" : written.GetDetail();
    const bool isTold = ::write(pipe, answer.data(), answer.size()) == ssize_t(answer.size());
    ::_exit(isTold ? 0 : 1);
}

Result RecoveryWriter::Finish()
{
    if (!IsRunning())
        return {Result::NotAvailable, "no write is under way"};
    const std::string answer = readAll(m_pipe);
    ::close(m_pipe);
    m_pipe = -1;
    int status = 0;
    while (::waitpid(m_child, &status, 0) < 0 && errno == EINTR) {
    }
    m_child = -1;
    if (answer == "done")
        return {};
    return {Result::StorageError, answer.empty() ? "the writing process ended early" : answer};
}

} // namespace Nodes
