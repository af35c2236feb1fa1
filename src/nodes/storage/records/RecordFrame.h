#pragma once

#include "nodes/storage/records/Record.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Bytes of a spill file: segments, each headed by what its records are, then the records, each
/// framed by its length and a hash. Files of earlier versions begin with records right away.
namespace Nodes::RecordFrame {

/// Of a frame before its content: length and hash.
constexpr std::size_t HeadBytes = 4 + 16;
constexpr std::size_t LongestContent = 16 * 1024 * 1024;
/// Of a record before its bytes, in the content: its key.
constexpr std::size_t KeyBytes = 8;
constexpr std::size_t LongestRecord = LongestContent - KeyBytes;

/// A record as it stands in a segment.
std::string Of(const Record &record);
/// What a segment of such records begins with.
std::string HeaderOf(const RecordFormat &format);

/// Length of the content that a frame's head announces; nothing when it is too long for one.
std::optional<std::size_t> ContentLength(std::string_view head);
bool IsSound(std::string_view head, std::string_view content);

/// True when the bytes begin a header; its frame follows behind MarkBytes.
bool IsMark(std::string_view bytes);
constexpr std::size_t MarkBytes = 8;
/// Version of the records behind that header. Nothing when they are of another owner or kind or a
/// later version: `content` says which.
std::optional<std::uint32_t> VersionIn(std::string_view content, const RecordFormat &format);

/// Nothing when the content is no record of a headed segment.
std::optional<Record> RecordIn(std::string_view content, std::uint32_t version);

} // namespace Nodes::RecordFrame
