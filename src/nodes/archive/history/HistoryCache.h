#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/HistoryColumn.h"
#include "nodes/archive/store/ArchiveSignalKey.h"

#include <cstddef>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <tuple>

namespace Nodes {

/// Pieces of history that were read from a store, so that a plot that is panned reads only what
/// comes into view. Bounded: what was asked for longest ago goes first. A piece is believed for
/// half a minute, because others may write to the store too. Any thread.
class NODES_EXPORT HistoryCache
{
public:
    using Column = std::shared_ptr<const HistoryColumn>;
    /// Which cells of the grid of 2^bits microseconds.
    struct Place
    {
        ArchiveSignalKey signal;
        int bits = 0;
        Timestamp index = 0;

        bool operator<(const Place &o) const
        {
            return std::tie(bits, index, signal) < std::tie(o.bits, o.index, o.signal);
        }
    };

    explicit HistoryCache(std::size_t bytes) : m_capacity(bytes) {}

    /// Null when it is not held.
    Column Find(const Place &place);
    void Keep(const Place &place, Column column);
    /// Samples came to a signal before its end.
    void Forget(const ArchiveSignalKey &signal);

private:
    struct Entry
    {
        Place place;
        Column column;
        Timestamp until; // steady time
        std::size_t bytes;
    };
    using Entries = std::list<Entry>;

    void remove(Entries::iterator entry);

    const std::size_t m_capacity;
    std::mutex m_mutex; // of the rest
    Entries m_entries;  // asked for last in front
    std::map<Place, Entries::iterator> m_places;
    std::size_t m_bytes = 0;
};

} // namespace Nodes
