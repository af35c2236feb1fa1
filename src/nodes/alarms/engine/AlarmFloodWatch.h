#pragma once

#include "nodes/NodesExport.h"
#include "nodes/alarms/AlarmFlood.h"

#include <array>
#include <cstdint>

namespace Nodes {

/// Counts the alarms of the last ten minutes, by whole seconds, whatever their number. Steady times
/// in microseconds, ascending; not guarded.
class NODES_EXPORT AlarmFloodWatch
{
public:
    /// A flood begins with more than `begin` alarms in ten minutes and ends with fewer than `end`.
    AlarmFloodWatch(int begin, int end) : m_begin(begin), m_end(end) {}

    /// What was counted stays.
    void SetLimits(int begin, int end)
    {
        m_begin = begin;
        m_end = end;
    }
    void Add(Timestamp steady, Timestamp wall);
    /// Time has passed.
    void Advance(Timestamp steady, Timestamp wall);
    const AlarmFlood &GetFlood() const { return m_flood; }
    /// Alarms since the flood began; of one that is over, all it had.
    std::uint64_t GetRaisedInFlood() const { return m_raisedInFlood; }
    /// Steady time of the next Advance that may change something; INT64_MAX without one.
    Timestamp Deadline() const;

private:
    static constexpr std::int64_t Window = 600; // s

    void judge(Timestamp wall);

    int m_begin;
    int m_end;
    std::array<int, Window> m_bySecond{};
    std::int64_t m_now = 0; // s, the last one counted
    AlarmFlood m_flood;
    std::uint64_t m_raisedInFlood = 0;
};

} // namespace Nodes
