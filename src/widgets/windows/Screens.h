#pragma once

#include "widgets/WidgetsExport.h"

class QRect;
class QScreen;
class QWidget;

namespace Widgets {

/// 0-based number of the screen that shows most of the widget with its window frame; 0 for null
/// and for widgets on no screen.
WIDGETS_EXPORT int ScreenNumber(const QWidget *widget);
/// Null when there is no screen with that 0-based number.
WIDGETS_EXPORT QScreen *ScreenAt(int number);
/// Screen that holds the rectangle's top-left corner, else the primary one.
WIDGETS_EXPORT QScreen *ScreenOf(const QRect &rectangle);

} // namespace Widgets
