#pragma once

#include <atomic>

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

private:
    std::atomic<int> m_currentDisplay{0};
};

} // namespace Nodes
