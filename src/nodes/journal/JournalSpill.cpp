#include "nodes/journal/JournalSpill.h"

#include "nodes/storage/DamagedFiles.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Nodes {

namespace {

constexpr std::size_t hashBytes = 16;
constexpr std::size_t headBytes = 4 + hashBytes;
constexpr std::size_t longestRecord = 16 * 1024 * 1024;
constexpr mode_t fileRights = 0640;

std::string frame(const std::string &packed)
{
    const auto size = static_cast<std::uint32_t>(packed.size());
    std::string record;
    for (unsigned shift = 0; shift < 32; shift += 8)
        record += static_cast<char>(size >> shift & 0xFF);
    return record + RecordHash(packed) + packed;
}

bool readAll(int fd, char *bytes, std::size_t size, std::size_t offset)
{
    while (size > 0) {
        const ssize_t count = ::pread(fd, bytes, size, static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes += count;
        offset += static_cast<std::size_t>(count);
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool writeAll(int fd, const std::string &bytes, std::size_t offset)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t written = ::pwrite(fd, bytes.data() + done, bytes.size() - done,
                                         static_cast<off_t>(offset + done));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        done += static_cast<std::size_t>(written);
    }
    return ::fsync(fd) == 0;
}

} // namespace

JournalSpill::~JournalSpill()
{
    close();
}

void JournalSpill::close()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
}

Result JournalSpill::failure(const char *what) const
{
    return Result(Result::StorageError, m_file + ": " + what + ": " + std::strerror(errno));
}

/// Nothing when no whole sound record follows.
std::optional<JournalRow> JournalSpill::readRecord(std::size_t &offset) const
{
    unsigned char head[headBytes];
    if (!readAll(m_descriptor, reinterpret_cast<char *>(head), headBytes, offset))
        return std::nullopt;
    const std::size_t size = head[0] | head[1] << 8 | head[2] << 16 | std::size_t(head[3]) << 24;
    if (size > longestRecord)
        return std::nullopt;
    std::string packed(size, '\0');
    if (!readAll(m_descriptor, packed.data(), size, offset + headBytes))
        return std::nullopt;
    if (std::memcmp(RecordHash(packed).data(), head + 4, hashBytes) != 0)
        return std::nullopt;
    offset += headBytes + size;
    return UnpackRow(packed);
}

/// Whether the file ends with the last sound record.
bool JournalSpill::findSound()
{
    m_size = 0;
    m_count = 0;
    while (readRecord(m_size))
        ++m_count;
    struct stat status = {};
    return ::fstat(m_descriptor, &status) == 0 && std::size_t(status.st_size) == m_size;
}

Result JournalSpill::Open(const std::string &file, Damage &damage)
{
    close();
    m_file = file;
    m_size = 0;
    m_count = 0;
    damage = Damage();
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return Result();
    m_descriptor = ::open(file.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (m_descriptor < 0) // its rows can be read all the same, to be stored twice at worst
        m_descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (m_descriptor < 0)
        return failure("open");
    damage.isTorn = !findSound();
    if (!damage.isTorn)
        return Result();
    const std::string copy = DamagedFiles::FreshName(file);
    if (std::filesystem::copy_file(file, copy, error))
        damage.copy = copy;
    damage.removed = DamagedFiles::KeepNewest(file, mostCopies);
    if (::ftruncate(m_descriptor, static_cast<off_t>(m_size)) != 0)
        return failure("truncate");
    return Result();
}

bool JournalSpill::IsGone() const
{
    struct stat status = {};
    return !IsEmpty() && ::fstat(m_descriptor, &status) == 0 && status.st_nlink == 0;
}

Result JournalSpill::Recreate()
{
    std::string bytes(m_size, '\0');
    if (!readAll(m_descriptor, bytes.data(), m_size, 0))
        return failure("read");
    const int fresh = ::open(m_file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, fileRights);
    if (fresh < 0)
        return failure("open");
    if (!writeAll(fresh, bytes, 0)) {
        const Result result = failure("write");
        ::close(fresh);
        ::unlink(m_file.c_str());
        return result;
    }
    close();
    m_descriptor = fresh;
    return Result();
}

Result JournalSpill::Append(const std::vector<JournalRow> &rows)
{
    std::string bytes;
    for (const JournalRow &row : rows)
        bytes += frame(PackRow(row));
    if (m_descriptor < 0)
        m_descriptor =
            ::open(m_file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, fileRights);
    if (m_descriptor < 0)
        return failure("open");
    if (IsGone())
        return Result(Result::StorageError, m_file + ": was deleted");
    if (!writeAll(m_descriptor, bytes, m_size)) {
        const Result result = failure("write");
        // Half a record would hide those that follow it.
        (void)!::ftruncate(m_descriptor, static_cast<off_t>(m_size));
        if (IsEmpty())
            (void)Clear();
        return result;
    }
    m_size += bytes.size();
    m_count += rows.size();
    return Result();
}

Result JournalSpill::Read(std::size_t &offset, std::size_t count,
                          std::vector<JournalRow> &rows) const
{
    rows.clear();
    while (rows.size() < count && offset < m_size) {
        std::optional<JournalRow> row = readRecord(offset);
        if (!row)
            return Result(Result::StorageError,
                          m_file + ": damaged record at byte " + std::to_string(offset));
        rows.push_back(std::move(*row));
    }
    return Result();
}

Result JournalSpill::Clear()
{
    if (::unlink(m_file.c_str()) != 0 && errno != ENOENT)
        return failure("remove");
    close();
    m_size = 0;
    m_count = 0;
    return Result();
}

} // namespace Nodes
