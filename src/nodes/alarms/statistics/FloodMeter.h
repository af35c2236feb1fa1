#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

#include <array>
#include <cstddef>
#include <optional>

namespace Nodes {

/// Finds alarm floods: one begins with the alarm that makes more than ten within ten minutes and
/// ends when there are fewer than five. Keeps the newest eleven times only, however many come.
class NODES_EXPORT FloodMeter
{
public:
    static constexpr Timestamp Window = Timestamp(600) * 1000000;
    static constexpr std::size_t Begins = 11; ///< alarms within the window
    static constexpr std::size_t Lasts = 5;   ///< alarms within the window

    struct Flood
    {
        Timestamp begin = 0;
        Timestamp end = 0;
    };

    /// An alarm was raised, not before what came earlier. Returns the flood that was over by then.
    std::optional<Flood> Add(Timestamp at);
    /// The flood that is over by then. None is told twice.
    std::optional<Flood> Advance(Timestamp now);
    bool IsFlood() const { return m_since != 0; }
    /// When the present one began; 0 without one.
    Timestamp GetSince() const { return m_since; }

private:
    /// Time of the n-th newest alarm, the newest being 1.
    Timestamp newest(std::size_t n) const { return m_times[(m_next + Begins - n) % Begins]; }

    std::array<Timestamp, Begins> m_times{}; // ring; 0: none yet
    std::size_t m_next = 0;
    Timestamp m_since = 0;
};

} // namespace Nodes
