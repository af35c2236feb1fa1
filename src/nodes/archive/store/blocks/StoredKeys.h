#pragma once

#include "nodes/archive/store/blocks/ArchiveTables.h"

#include <cstdint>
#include <map>

namespace Nodes {

/// Keys of records that an archive has stored, as intervals: those of one run of a program count
/// up, so they are few however long a station runs. One thread, within a transaction.
class StoredKeys
{
public:
    explicit StoredKeys(ArchiveTables &tables) : m_tables(tables) {}

    [[nodiscard]] Result Load();
    bool Has(std::uint64_t key) const;
    /// One that it has not. Written by Save.
    void Add(std::uint64_t key);
    [[nodiscard]] Result Save();

private:
    using Intervals = std::map<std::uint64_t, std::uint64_t>; // first to last

    Intervals::const_iterator at(std::uint64_t key) const;

    ArchiveTables &m_tables;
    Intervals m_intervals;
    Intervals m_written; // as they stand in the store
};

} // namespace Nodes
