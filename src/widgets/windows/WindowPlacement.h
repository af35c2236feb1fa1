#pragma once

#include "widgets/WidgetsExport.h"

#include <QRect>

class QWidget;

namespace Nodes {
class BasicPlacingAction;
class BasicWindow;
} // namespace Nodes

namespace Widgets {

class WindowBasic;

/// How actions decorate, place and present windows: the one place where those rules stand.
/// GUI thread.
class WIDGETS_EXPORT WindowPlacement
{
public:
    /// What is moved, shown and closed for a window: its frame window when it has one, else itself.
    static QWidget *outermost(QWidget *window);
    /// Sets the flags that the node asks for, wrapped in a frame window or translucent; the result
    /// is what outermost gives.
    static QWidget *decorate(WindowBasic &window);
    /// Where the window's client area goes on a 0-based display, screen pixels.
    static QRect clientArea(const Nodes::BasicPlacingAction &action, const Nodes::BasicWindow &node,
                            int display);
    /// Puts the window's client area there.
    static void place(WindowBasic &window, const QRect &clientArea);
    /// Puts a window, decoration included, in the middle of a 0-based display; of the primary one
    /// when there is no such display.
    static void centre(QWidget &outermost, int display);
    /// Follows the geometry of the window's node, which was `from` and is now `to`. Inside a frame
    /// that is a change of place and size; the node's place itself counts from the screen.
    static void follow(WindowBasic &window, const QRect &from, const QRect &to);
    /// Moves a top-level window that is on no screen any more, because the one at `gone` was
    /// unplugged, to the same place of the primary screen.
    static void bringBack(QWidget &window, const QRect &gone);
    /// Shows (a minimised one restored), raises, focuses and activates the window.
    static void present(QWidget &window);
};

} // namespace Widgets
