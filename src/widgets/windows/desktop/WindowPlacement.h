#pragma once

#include "widgets/WidgetsExport.h"

class QWidget;

namespace Nodes {
class BasicPlacingAction;
class BasicWindow;
} // namespace Nodes

namespace Widgets {

class FrameMapping;
class WindowBasic;

/// How actions decorate and place windows: the one place where those rules stand. GUI thread.
class WIDGETS_EXPORT WindowPlacement
{
public:
    /// Sets the flags that the node asks for, wrapped in a frame window or translucent; the result
    /// is what DesktopPlacement::outermost gives.
    static QWidget *decorate(WindowBasic &window);
    /// Puts the window where the action asks for, scaled as the frame of that 0-based display is.
    /// Its client area lies there, unless its title would then be above or beyond every screen.
    static void place(WindowBasic &window, const Nodes::BasicPlacingAction &action,
                      const Nodes::BasicWindow &node, int display);
    /// Gives the window another mapping; one with a place of its own on the screen keeps the place
    /// that it has in node coordinates.
    static void remap(WindowBasic &window, const FrameMapping &mapping);
};

} // namespace Widgets
