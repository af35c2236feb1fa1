#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace Nodes {

/// Finds alarm floods: one begins with the alarm that makes more than so many within ten minutes
/// and ends when there are fewer than that. Keeps the newest times only, however many come.
class NODES_EXPORT FloodMeter
{
public:
    static constexpr Timestamp Window = Timestamp(600) * 1000000;

    /// Numbers of alarms within the window.
    struct Limits
    {
        int above = 10; ///< more than these begin a flood; at least 1
        int below = 5;  ///< fewer than these end it; 1 to `above`
    };

    struct Flood
    {
        Timestamp begin = 0;
        Timestamp end = 0;
    };

    explicit FloodMeter(Limits limits);

    /// An alarm was raised, not before what came earlier. Returns the flood that was over by then.
    std::optional<Flood> Add(Timestamp at);
    /// The flood that is over by then. None is told twice.
    std::optional<Flood> Advance(Timestamp now);
    bool IsFlood() const { return m_since != 0; }
    /// When the present one began; 0 without one.
    Timestamp GetSince() const { return m_since; }

private:
    /// Time of the n-th newest alarm, the newest being 1.
    Timestamp newest(std::size_t n) const
    {
        return m_times[(m_next + m_times.size() - n) % m_times.size()];
    }

    std::size_t m_lasts;
    std::vector<Timestamp> m_times; // ring; 0: none yet
    std::size_t m_next = 0;
    Timestamp m_since = 0;
};

} // namespace Nodes
