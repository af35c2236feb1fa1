#pragma once

#include "nodes/values/NPoint.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <utility>

namespace Nodes {

/// What an action knows of the gesture that triggered it. Any thread may push an action while the
/// GUI thread notes a gesture.
class IAction
{
public:
    virtual ~IAction() = default;

    /// 0-based number of the display on which the action was triggered.
    int currentDisplay() const { return m_currentDisplay; }
    void setCurrentDisplay(int display) { m_currentDisplay = display; }
    /// Place on the desktop of the gesture; none: nobody's gesture.
    std::optional<NPoint> triggerPoint() const
    {
        const std::lock_guard lock(m_mutex);
        return m_triggerPoint;
    }
    void setTriggerPoint(const std::optional<NPoint> &point) { exchangeTriggerPoint(point); }
    /// It holds for one push: whoever pushes the action next may have no place.
    std::optional<NPoint> takeTriggerPoint() { return exchangeTriggerPoint(std::nullopt); }

private:
    std::optional<NPoint> exchangeTriggerPoint(const std::optional<NPoint> &point)
    {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_triggerPoint, point);
    }

    std::atomic<int> m_currentDisplay{0};
    mutable std::mutex m_mutex; // guards the point
    std::optional<NPoint> m_triggerPoint;
};

} // namespace Nodes
