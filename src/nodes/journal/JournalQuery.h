#pragma once

#include "nodes/events/BasicEvent.h"
#include "nodes/storage/RecordSource.h"
#include "nodes/values/Timestamp.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Nodes {

/// Place of an entry in the order of answers: by time, entries of the same time as they were
/// stored.
struct JournalKey
{
    Timestamp time = 0;
    unsigned long id = 0;

    static JournalKey Of(const BasicEvent &event) { return {event.time, event.id}; }
};

/// Which journal entries to read, a page at a time: what a page costs does not depend on how many
/// came before it.
struct JournalQuery
{
    enum Order { OldestFirst, NewestFirst };

    Timestamp begin = 0; ///< inclusive
    Timestamp end = 0;   ///< exclusive; 0: no end
    std::optional<int> maximumLevel;
    std::vector<int> levels;        ///< EventLevel, of these only; empty: any
    std::vector<int> types;         ///< EventType, of these only; empty: any
    std::vector<std::string> users; ///< by exact name, "" for the system itself; empty: any
    std::string source;             ///< exact name at the time; "" any
    /// Entries about any of these, whatever they were called: see EventJournal::SourceOf. Names
    /// here do not count. Empty: any.
    std::vector<RecordSource> nodes;
    std::string text; ///< case-insensitive part of the text, Cyrillic included; "" any
    Order order = OldestFirst;
    /// Goes on behind this entry in that order, whether it is still there or not: the last one of
    /// the page before.
    std::optional<JournalKey> after;
    std::size_t limit = 10000; ///< of the page; a page that has fewer is the last one
};

} // namespace Nodes
