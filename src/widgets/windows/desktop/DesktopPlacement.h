#pragma once

#include "widgets/WidgetsExport.h"

#include <QRect>

class QSize;
class QWidget;

namespace Widgets {

class FrameMapping;

/// Where any window goes on the desktop, whatever it shows, and how it comes to the front.
/// GUI thread.
class WIDGETS_EXPORT DesktopPlacement
{
public:
    /// What is moved, shown and closed for a window: its frame window when it has one, else itself.
    static QWidget *outermost(QWidget *window);
    /// Size on the screen of a window drawn there: no more than all displays can show.
    static QSize shownSize(const FrameMapping &mapping, const QRect &drawn);
    /// Nearest place for `window` within `screen` where it does not lie on `other`; where it is
    /// when there is no room.
    static QPoint clearOf(const QRect &window, const QRect &other, const QRect &screen);
    /// Moves a top-level window that is on no screen any more, because the one at `gone` was
    /// unplugged (null: changed), to the same place of the primary screen, and one whose title
    /// cannot be caught on to the nearest screen.
    static void bringBack(QWidget &window, const QRect &gone);
    /// Shows (a minimised one restored), raises, focuses and activates the window.
    static void present(QWidget &window);
};

} // namespace Widgets
