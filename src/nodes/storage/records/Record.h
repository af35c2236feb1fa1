#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

/// One record on its way to a store: bytes that its owner alone understands. It may hold one event
/// or a packet of samples; counts are of records.
struct Record
{
    /// Goes with the record through spill file and store, so that it is never stored twice. Those
    /// of one run of a program count up from a random number and are never given again.
    std::uint64_t key = 0;
    std::uint32_t version = 0; ///< of the bytes' format: see RecordFormat
    std::string bytes;
};

using Records = std::vector<Record>;

/// What a file of records says about itself: read as anything else it would be misread.
struct RecordFormat
{
    std::string owner;         ///< whose records: "journal"
    std::string kind;          ///< what one record is: "event"
    std::uint32_t version = 1; ///< of the records made now; earlier ones are read, later ones not
    /// Takes a record out of a file of the time before files named their format; nothing when the
    /// bytes are none. Empty: there are no such files.
    std::function<std::optional<Record>(std::string_view bytes)> fromUnnamed;
};

} // namespace Nodes
