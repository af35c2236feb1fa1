#pragma once

#include "nodes/alarms/engine/AlarmFloodWatch.h"
#include "nodes/values/SlotList.h"

#include <functional>
#include <string>

namespace Nodes {

/// Tells subscribers and journal of a flood: its beginning, its end, and while it lasts its number,
/// once a second at most. On one thread.
class AlarmFloodTeller
{
public:
    using Journal = std::function<void(bool isFlood, const std::string &text)>;

    void Tell(const AlarmFloodWatch &watch, Timestamp steady, const Journal &journal);
    /// Any thread.
    Connection Connect(std::function<void(const AlarmFlood &)> slot)
    {
        return m_changed.Connect(std::move(slot));
    }

private:
    AlarmFlood m_told;
    Timestamp m_toldAt = 0; // steady
    SlotList<const AlarmFlood &> m_changed;
};

} // namespace Nodes
