#include "nodes/storage/records/RecordFrame.h"

#include "nodes/storage/Digest.h"

#include <charconv>

namespace Nodes {

namespace {

// As a length it is beyond every record, so that no record begins with it.
constexpr std::string_view mark("\x7fRECORDS", RecordFrame::MarkBytes);
constexpr std::size_t hashBytes = RecordFrame::HeadBytes - 4;

std::string numberBytes(std::uint64_t number, std::size_t size)
{
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(number >> (8 * i) & 0xFF);
    return bytes;
}

std::uint64_t numberIn(std::string_view bytes)
{
    std::uint64_t number = 0;
    for (std::size_t i = bytes.size(); i > 0; --i)
        number = number << 8 | static_cast<unsigned char>(bytes[i - 1]);
    return number;
}

std::string hashOf(std::string_view content)
{
    return Digest(hashBytes).Add(content).Finish();
}

std::string framed(std::string_view content)
{
    std::string frame = numberBytes(content.size(), 4);
    frame += hashOf(content);
    frame += content;
    return frame;
}

std::string nameOf(const RecordFormat &format)
{
    return format.owner + "/" + format.kind + "/";
}

} // namespace

std::string RecordFrame::Of(const Record &record)
{
    std::string content = numberBytes(record.key, KeyBytes);
    content += record.bytes;
    return framed(content);
}

std::string RecordFrame::HeaderOf(const RecordFormat &format)
{
    std::string header(mark);
    header += framed(nameOf(format) + std::to_string(format.version));
    return header;
}

std::optional<std::size_t> RecordFrame::ContentLength(std::string_view head)
{
    const std::uint64_t length = numberIn(head.substr(0, 4));
    return length <= LongestContent ? std::optional<std::size_t>(length) : std::nullopt;
}

bool RecordFrame::IsSound(std::string_view head, std::string_view content)
{
    return head.substr(4, hashBytes) == hashOf(content);
}

bool RecordFrame::IsMark(std::string_view bytes)
{
    return bytes.substr(0, MarkBytes) == mark;
}

std::optional<std::uint32_t> RecordFrame::VersionIn(std::string_view content,
                                                    const RecordFormat &format)
{
    const std::string name = nameOf(format);
    if (content.substr(0, name.size()) != name)
        return std::nullopt;
    const char *const end = content.data() + content.size();
    std::uint32_t version = 0;
    const auto read = std::from_chars(content.data() + name.size(), end, version);
    if (read.ec != std::errc() || read.ptr != end || version > format.version)
        return std::nullopt;
    return version;
}

std::optional<Record> RecordFrame::RecordIn(std::string_view content, std::uint32_t version)
{
    if (content.size() < KeyBytes)
        return std::nullopt;
    return Record{numberIn(content.substr(0, KeyBytes)), version,
                  std::string(content.substr(KeyBytes))};
}

} // namespace Nodes
