#include "nodes/storage/records/RecordSpill.h"

#include "nodes/storage/DamagedFiles.h"
#include "nodes/storage/records/RecordFrame.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Nodes {

namespace {

constexpr mode_t fileRights = 0640;
constexpr std::size_t windowBytes = 256 * 1024;
constexpr std::size_t mostReadBytes = 8 * 1024 * 1024;

/// Bytes read; less than asked for at the end of the file and after a failure.
std::size_t readSome(int fd, char *bytes, std::size_t size, std::size_t offset)
{
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count =
            ::pread(fd, bytes + done, size - done, static_cast<off_t>(offset + done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
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

RecordSpill::~RecordSpill()
{
    close();
}

void RecordSpill::close()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    m_window.clear();
    m_segments.clear();
    m_size = 0;
    m_count = 0;
}

Result RecordSpill::failure(const char *what) const
{
    return Result(Result::StorageError, m_file + ": " + what + ": " + std::strerror(errno));
}

/// Bytes of the file; fewer at its end. Valid until the next call.
std::string_view RecordSpill::view(std::size_t offset, std::size_t size) const
{
    const bool isInside =
        offset >= m_windowBegin && offset + size <= m_windowBegin + m_window.size();
    if (!isInside) {
        m_window.resize(std::max(size, windowBytes));
        m_window.resize(readSome(m_descriptor, m_window.data(), m_window.size(), offset));
        m_windowBegin = offset;
    }
    return std::string_view(m_window).substr(offset - m_windowBegin, size);
}

/// Content of the frame that stands there, with the offset moved behind it; nothing when no whole
/// sound frame does.
std::optional<std::string_view> RecordSpill::readFrame(std::size_t &offset) const
{
    std::string_view head = view(offset, RecordFrame::HeadBytes);
    if (head.size() < RecordFrame::HeadBytes)
        return std::nullopt;
    const std::optional<std::size_t> length = RecordFrame::ContentLength(head);
    if (!length)
        return std::nullopt;
    const std::string_view frame = view(offset, RecordFrame::HeadBytes + *length);
    if (frame.size() < RecordFrame::HeadBytes + *length)
        return std::nullopt;
    const std::string_view content = frame.substr(RecordFrame::HeadBytes);
    if (!RecordFrame::IsSound(frame, content))
        return std::nullopt;
    offset += frame.size();
    return content;
}

std::optional<Record> RecordSpill::readRecord(std::size_t &offset) const
{
    const auto next =
        std::upper_bound(m_segments.begin(), m_segments.end(), offset,
                         [](std::size_t at, const Segment &segment) { return at < segment.begin; });
    if (next == m_segments.begin())
        return std::nullopt;
    const Segment &segment = *std::prev(next);
    std::size_t at = std::max(offset, segment.records);
    const std::optional<std::string_view> content = readFrame(at);
    if (!content)
        return std::nullopt;
    std::optional<Record> record = segment.version
                                       ? RecordFrame::RecordIn(*content, *segment.version)
                                       : m_format.fromUnnamed(*content);
    if (record)
        offset = at;
    return record;
}

/// Moves behind a header and begins its segment; Refused when that one is not ours.
Result RecordSpill::readHeader(std::size_t &offset, bool &isHeader)
{
    isHeader = false;
    if (!RecordFrame::IsMark(view(offset, RecordFrame::MarkBytes)))
        return Result();
    std::size_t at = offset + RecordFrame::MarkBytes;
    const std::optional<std::string_view> content = readFrame(at);
    if (!content)
        return Result();
    const std::optional<std::uint32_t> version = RecordFrame::VersionIn(*content, m_format);
    if (!version)
        return Result(Result::Refused, m_file + ": holds records of \"" + std::string(*content) +
                                           "\", not those of \"" + m_format.owner + "/" +
                                           m_format.kind + "\" up to version " +
                                           std::to_string(m_format.version));
    isHeader = true;
    m_segments.push_back({offset, at, version});
    offset = at;
    return Result();
}

/// `isSound`: the file ends with the last sound record.
Result RecordSpill::scan(bool &isSound)
{
    for (;;) {
        bool isHeader = false;
        Result result = readHeader(m_size, isHeader);
        if (!result)
            return result;
        if (isHeader)
            continue;
        if (m_segments.empty() && m_format.fromUnnamed)
            m_segments.push_back({0, 0, std::nullopt});
        if (!readRecord(m_size))
            break;
        ++m_count;
    }
    struct stat status = {};
    isSound = ::fstat(m_descriptor, &status) == 0 && std::size_t(status.st_size) == m_size;
    return Result();
}

Result RecordSpill::Open(const std::string &file, RecordFindings &findings)
{
    close();
    m_file = file;
    m_refusal = Result();
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return Result();
    bool isSound = false;
    Result result = openFile();
    if (result)
        result = scan(isSound);
    if (!result) { // what it holds must not be written over
        m_refusal = result;
        close();
        return result;
    }
    if (isSound)
        return result;
    cut(findings);
    return ::ftruncate(m_descriptor, static_cast<off_t>(m_size)) == 0 ? Result()
                                                                      : failure("truncate");
}

Result RecordSpill::openFile()
{
    m_descriptor = ::open(m_file.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (m_descriptor < 0) // its records can be read all the same, to be stored twice at worst
        m_descriptor = ::open(m_file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    return m_descriptor < 0 ? failure("open") : Result();
}

void RecordSpill::cut(RecordFindings &findings)
{
    if (m_size == 0)
        m_segments.clear();
    RecordFinding torn;
    torn.kind = RecordFinding::SpillTorn;
    torn.place = m_file;
    const std::string copy = DamagedFiles::FreshName(m_file);
    std::error_code error;
    if (std::filesystem::copy_file(m_file, copy, error))
        torn.detail = copy;
    torn.removed = DamagedFiles::KeepNewest(m_file, mostCopies);
    findings.push_back(std::move(torn));
    m_window.clear();
}

bool RecordSpill::IsGone() const
{
    struct stat status = {};
    return !IsEmpty() && ::fstat(m_descriptor, &status) == 0 && status.st_nlink == 0;
}

Result RecordSpill::Recreate()
{
    std::string bytes(m_size, '\0');
    if (readSome(m_descriptor, bytes.data(), m_size, 0) < m_size)
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
    ::close(std::exchange(m_descriptor, fresh));
    return Result();
}

Result RecordSpill::Append(const Records &records)
{
    if (!m_refusal)
        return m_refusal;
    if (m_descriptor < 0)
        m_descriptor =
            ::open(m_file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, fileRights);
    if (m_descriptor < 0)
        return failure("open");
    if (IsGone())
        return Result(Result::StorageError, m_file + ": was deleted");
    std::vector<Segment> segments = m_segments;
    std::string bytes;
    for (const Record &record : records) {
        if (segments.empty() || segments.back().version != record.version) {
            RecordFormat format = m_format;
            format.version = record.version;
            const std::string header = RecordFrame::HeaderOf(format);
            const std::size_t begin = m_size + bytes.size();
            segments.push_back({begin, begin + header.size(), record.version});
            bytes += header;
        }
        bytes += RecordFrame::Of(record);
    }
    if (!writeAll(m_descriptor, bytes, m_size)) {
        const Result result = failure("write");
        // Half a record would hide those that follow it.
        (void)!::ftruncate(m_descriptor, static_cast<off_t>(m_size));
        if (IsEmpty())
            (void)Clear();
        return result;
    }
    m_segments = std::move(segments);
    m_window.clear();
    m_size += bytes.size();
    m_count += records.size();
    return Result();
}

Result RecordSpill::Read(std::size_t &offset, std::size_t count, Records &records) const
{
    records.clear();
    const std::size_t begin = offset;
    while (records.size() < count && offset < m_size && offset - begin < mostReadBytes) {
        std::optional<Record> record = readRecord(offset);
        if (!record)
            return Result(Result::StorageError,
                          m_file + ": damaged record at byte " + std::to_string(offset));
        records.push_back(std::move(*record));
    }
    return Result();
}

Result RecordSpill::Clear()
{
    if (::unlink(m_file.c_str()) != 0 && errno != ENOENT)
        return failure("remove");
    close();
    return Result();
}

} // namespace Nodes
