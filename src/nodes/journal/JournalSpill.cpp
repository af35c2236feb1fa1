#include "nodes/journal/JournalSpill.h"

#include "nodes/storage/DamagedFiles.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <unistd.h>

namespace Nodes {

namespace {

constexpr std::size_t hashBytes = 16;
constexpr std::size_t headBytes = 4 + hashBytes;
constexpr std::size_t longestRecord = 16 * 1024 * 1024;

class Descriptor
{
public:
    explicit Descriptor(const std::string &file)
        : m_fd(::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0640))
    {
    }
    ~Descriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    int Get() const { return m_fd; }

private:
    int m_fd;
};

std::string frame(const std::string &packed)
{
    const auto size = static_cast<std::uint32_t>(packed.size());
    std::string record;
    for (unsigned shift = 0; shift < 32; shift += 8)
        record += static_cast<char>(size >> shift & 0xFF);
    return record + RecordHash(packed) + packed;
}

/// Nothing when no whole sound record follows.
std::optional<JournalRow> readRecord(std::istream &stream)
{
    unsigned char head[headBytes];
    if (!stream.read(reinterpret_cast<char *>(head), headBytes))
        return std::nullopt;
    const std::size_t size = head[0] | head[1] << 8 | head[2] << 16 | std::size_t(head[3]) << 24;
    if (size > longestRecord)
        return std::nullopt;
    std::string packed(size, '\0');
    if (!stream.read(packed.data(), static_cast<std::streamsize>(size)))
        return std::nullopt;
    if (std::memcmp(RecordHash(packed).data(), head + 4, hashBytes) != 0)
        return std::nullopt;
    return UnpackRow(packed);
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

Result JournalSpill::failure(const char *what) const
{
    return Result(Result::StorageError, m_file + ": " + what + ": " + std::strerror(errno));
}

std::size_t JournalSpill::soundSize() const
{
    std::ifstream stream(m_file, std::ios::binary);
    std::size_t size = 0;
    while (stream && readRecord(stream))
        size = static_cast<std::size_t>(stream.tellg());
    return size;
}

Result JournalSpill::Open(const std::string &file, Damage &damage)
{
    m_file = file;
    m_size = 0;
    damage = Damage();
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return Result();
    m_size = soundSize();
    damage.isTorn = m_size != std::filesystem::file_size(file, error);
    if (!damage.isTorn)
        return Result();
    const std::string copy = DamagedFiles::FreshName(file);
    if (std::filesystem::copy_file(file, copy, error))
        damage.copy = copy;
    damage.removed = DamagedFiles::KeepNewest(file, mostCopies);
    if (::truncate(file.c_str(), static_cast<off_t>(m_size)) != 0)
        return failure("truncate");
    return Result();
}

Result JournalSpill::Append(const std::vector<JournalRow> &rows)
{
    std::string bytes;
    for (const JournalRow &row : rows)
        bytes += frame(PackRow(row));
    const Descriptor file(m_file);
    if (file.Get() < 0)
        return failure("open");
    if (!writeAll(file.Get(), bytes, m_size)) {
        const Result result = failure("write");
        // Half a record would hide those that follow it.
        (void)!::ftruncate(file.Get(), static_cast<off_t>(m_size));
        return result;
    }
    m_size += bytes.size();
    return Result();
}

Result JournalSpill::Read(std::size_t &offset, std::size_t count,
                          std::vector<JournalRow> &rows) const
{
    rows.clear();
    std::ifstream stream(m_file, std::ios::binary);
    stream.seekg(static_cast<std::streamoff>(offset));
    if (!stream)
        return failure("read");
    while (rows.size() < count && offset < m_size) {
        std::optional<JournalRow> row = readRecord(stream);
        if (!row)
            return Result(Result::StorageError,
                          m_file + ": damaged record at byte " + std::to_string(offset));
        rows.push_back(std::move(*row));
        offset = static_cast<std::size_t>(stream.tellg());
    }
    return Result();
}

Result JournalSpill::Clear()
{
    if (::unlink(m_file.c_str()) != 0 && errno != ENOENT)
        return failure("remove");
    m_size = 0;
    return Result();
}

} // namespace Nodes
