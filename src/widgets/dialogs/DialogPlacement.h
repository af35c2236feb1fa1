#pragma once

#include "widgets/WidgetsExport.h"

class QPoint;
class QRect;
class QSize;
class QWidget;

namespace Widgets {

/// Where dialogs come up: wholly on a screen, with the decoration that a desktop may give them. For
/// top-level windows that are about to be shown, or are. GUI thread.
class WIDGETS_EXPORT DialogPlacement
{
public:
    /// In the middle of a 0-based display; of the primary one when there is no such display.
    static void centre(QWidget &dialog, int display);
    /// Where it leaves that element in sight, on its screen.
    static void beside(QWidget &dialog, const QWidget &element);
    /// Place for something of that size on `screen` that leaves `what` in sight: below, above, to
    /// the right or left of it, else as near as `screen` allows. `gap` is kept free between the
    /// two.
    static QPoint beside(const QRect &what, const QSize &size, const QRect &screen, int gap);
    /// Moves it onto the screen that it is nearest to, and takes from its size what would not fit.
    static void fit(QWidget &dialog);
};

} // namespace Widgets
