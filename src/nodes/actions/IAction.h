#pragma once

#include "nodes/values/NPoint.h"

#include <optional>

namespace Nodes {

/// What an action knows of the gesture that triggered it.
class IAction
{
public:
    virtual ~IAction() = default;

    /// 0-based number of the display on which the action was triggered.
    int currentDisplay() const { return m_currentDisplay; }
    void setCurrentDisplay(int display) { m_currentDisplay = display; }
    /// Place on the desktop of the gesture; none: nobody's gesture. Holds for the next push only.
    const std::optional<NPoint> &triggerPoint() const { return m_triggerPoint; }
    void setTriggerPoint(const std::optional<NPoint> &point) { m_triggerPoint = point; }

private:
    int m_currentDisplay = 0;
    std::optional<NPoint> m_triggerPoint;
};

} // namespace Nodes
