#pragma once

#include "nodes/events/BasicEvent.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Nodes {

/// A journal entry on its way to the store. The key is unique across restarts and goes with the
/// entry through spill file and database: the same entry is never stored twice.
struct JournalRow
{
    std::uint64_t key = 0;
    BasicEvent event;
};

/// A row with a fresh key; any thread.
JournalRow MakeJournalRow(BasicEvent event);

/// Canonical bytes of key and event, without the row's id: what is spilled and hashed.
std::string PackRow(const JournalRow &row);
/// Nothing when the bytes are no packed row.
std::optional<JournalRow> UnpackRow(std::string_view bytes);

/// Hash of a row chained to its predecessor's: covers the row's id and its packed bytes.
std::string ChainHash(const std::string &previous, std::uint64_t id, std::string_view packed);
/// What the first row is chained to.
std::string FirstHash();
/// Short hash that guards one record of a spill file.
std::string RecordHash(std::string_view packed);

} // namespace Nodes
