#pragma once

#include "widgets/actions/qBasicAction.h"

namespace Nodes {
class BasicOpeningAction;
class BasicWindow;
} // namespace Nodes

class QWidget;

namespace Widgets {

class WindowBasic;

/// The course that every action follows which opens a window. GUI thread, with a window manager.
class WindowOpening
{
public:
    /// Whether the window may be opened; a refusal at run time is journalled and told.
    static bool isAllowed(const Nodes::BasicWindow &window, const ActionTrigger &trigger);
    /// Brings an open window forward.
    static void bringForward(QWidget &window, qBasicAction::Clock::time_point since);
    /// Opens the window on a 0-based display as the action asks; null when it could not be made or
    /// is gone again. Events but no input have run since.
    static WindowBasic *open(const Nodes::BasicOpeningAction &action, Nodes::BasicWindow &window,
                             int display, qBasicAction::Clock::time_point since);
};

} // namespace Widgets
