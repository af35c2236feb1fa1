#pragma once

#include "widgets/WidgetsExport.h"

#include <QRect>

class QSize;
class QWidget;

namespace Nodes {
class BasicPlacingAction;
class BasicWindow;
} // namespace Nodes

namespace Widgets {

class FrameMapping;
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
    /// Puts the window where the action asks for, scaled as the frame of that 0-based display is.
    /// Its client area lies there, unless its title would then be above or beyond every screen.
    static void place(WindowBasic &window, const Nodes::BasicPlacingAction &action,
                      const Nodes::BasicWindow &node, int display);
    /// Gives the window another mapping; one with a place of its own on the screen keeps the place
    /// that it has in node coordinates.
    static void remap(WindowBasic &window, const FrameMapping &mapping);
    /// Size on the screen of a window drawn there: no more than all displays can show.
    static QSize shownSize(const FrameMapping &mapping, const QRect &drawn);
    /// Puts a window, decoration included, in the middle of a 0-based display; of the primary one
    /// when there is no such display.
    static void centre(QWidget &outermost, int display);
    /// Nearest place for `window` within `screen` where it does not lie on `other`; where it is
    /// when there is no room.
    static QPoint clearOf(const QRect &window, const QRect &other, const QRect &screen);
    /// Puts a dialog that is not shown yet where it leaves that element in sight, on its screen.
    static void beside(QWidget &dialog, const QWidget &element);
    /// Follows the geometry of the window's node, which was `from` and is now `to`. Inside a frame
    /// that is a change of place and size; the node's place itself counts from the screen.
    static void follow(WindowBasic &window, const QRect &from, const QRect &to);
    /// Moves a top-level window that is on no screen any more, because the one at `gone` was
    /// unplugged (null: changed), to the same place of the primary screen, and one whose title
    /// cannot be caught on to the nearest screen.
    static void bringBack(QWidget &window, const QRect &gone);
    /// Shows (a minimised one restored), raises, focuses and activates the window.
    static void present(QWidget &window);
};

} // namespace Widgets
