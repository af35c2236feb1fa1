#include "apps/records/OutputFile.h"

#include "apps/common/process/StopRequest.h"
#include "apps/records/Message.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Records {

namespace {

using Nodes::Result;

constexpr std::size_t bufferSize = 1 << 16;
constexpr mode_t fileRights = 0644;

bool isInPlace(const std::string &path)
{
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
}

} // namespace

OutputFile::OutputFile(std::string path) : m_path(path == "-" ? std::string() : std::move(path)) {}

OutputFile::~OutputFile()
{
    if (m_descriptor > STDOUT_FILENO)
        ::close(m_descriptor);
    if (!m_aside.empty())
        ::unlink(m_aside.c_str());
}

Result OutputFile::open()
{
    m_buffer.reserve(2 * bufferSize);
    if (m_path.empty()) {
        m_descriptor = STDOUT_FILENO;
        return Result();
    }
    const bool inPlace = isInPlace(m_path);
    if (!inPlace)
        m_aside = m_path + ".part";
    const std::string &file = inPlace ? m_path : m_aside;
    const int flags = O_WRONLY | O_CLOEXEC | (inPlace ? 0 : O_CREAT | O_TRUNC);
    m_descriptor = ::open(file.c_str(), flags, fileRights);
    if (m_descriptor < 0) {
        fail(errno);
        m_aside.clear();
    }
    return m_result;
}

void OutputFile::write(std::string_view text)
{
    m_buffer.append(text);
    if (m_buffer.size() >= bufferSize)
        flush();
}

void OutputFile::flush()
{
    std::string_view rest = m_buffer;
    while (!rest.empty() && m_result) {
        const ssize_t size = ::write(m_descriptor, rest.data(), rest.size());
        if (size >= 0) {
            rest.remove_prefix(std::size_t(size));
            m_bytesWritten += std::size_t(size);
        } else if (errno != EINTR) {
            fail(errno);
        }
    }
    m_buffer.clear();
}

void OutputFile::fail(int error)
{
    const std::string name = m_path.empty() ? "standard output" : "\"" + m_path + "\"";
    if (error == EPIPE)
        m_result = Result(Result::Cancelled, "whoever read " + name + " went away");
    else
        m_result =
            Result(Result::StorageError, "cannot write " + name + ": " + std::strerror(error) +
                                             "; make room or name another file with -o");
}

Result OutputFile::finish()
{
    flush();
    if (m_result && !m_aside.empty() && ::fsync(m_descriptor) != 0)
        fail(errno);
    // A network file system may tell only now.
    if (m_result && ::close(m_descriptor) != 0)
        fail(errno);
    else if (!m_result && m_descriptor > STDOUT_FILENO)
        ::close(m_descriptor);
    m_descriptor = -1;
    return m_result && !m_aside.empty() ? putInPlace() : m_result;
}

bool OutputFile::conclude(Result made, std::uint64_t rows)
{
    if (Host::StopRequest::isMade())
        made = Result(Result::Cancelled, "stopped");
    const bool isFile = !m_path.empty();
    if (made || !isFile) {
        const Result written = finish();
        made = made ? written : made;
    }
    if (!made)
        Message::tell(made.GetDetail() + "; " + std::to_string(rows) + " rows were " +
                      (isFile ? "made, the file was not written" : "written"));
    return bool(made);
}

Result OutputFile::putInPlace()
{
    if (std::rename(m_aside.c_str(), m_path.c_str()) != 0)
        fail(errno);
    else
        m_aside.clear();
    return m_result;
}

} // namespace Records
