#pragma once

#include "nodes/events/BasicEvent.h"
#include "nodes/storage/RecordSource.h"
#include "nodes/storage/records/Record.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Nodes {

/// A journal entry as it is stored. The event's text of the source and its link are not used: the
/// source tells what they were.
struct JournalRow
{
    /// How the row is packed for its hash and for spill files.
    enum Version : std::uint32_t {
        WithBareNode = 1, ///< of earlier versions: the source is a name and a node of any project
        WithSource = 2
    };

    /// Stands for a record that cannot be read, so that its loss shows.
    static JournalRow Unreadable(const Record &record);

    std::uint64_t key = 0;
    std::uint32_t version = WithSource;
    BasicEvent event;
    RecordSource source;
};

/// Of the journal's records; reads those of earlier versions.
RecordFormat JournalFormat();

/// Bytes of a record of the present version: everything of the entry but its id.
std::string PackEvent(const BasicEvent &event, const RecordSource &source);
/// The record that a row was, byte for byte.
Record PackRow(const JournalRow &row);
/// Nothing when the bytes are no journal entry.
std::optional<JournalRow> UnpackRow(const Record &record);

/// Hash of a row chained to its predecessor's: covers its number, its key and all of its content.
std::string ChainHash(const std::string &previous, std::uint64_t number, const Record &record);
/// What the first row is chained to.
std::string FirstHash();

} // namespace Nodes
