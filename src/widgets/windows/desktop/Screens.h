#pragma once

#include "widgets/WidgetsExport.h"

#include <QRect>

class QScreen;
class QSize;
class QWidget;

namespace Widgets {

/// 0-based number of the screen that shows most of the widget with its window frame; 0 for null
/// and for widgets on no screen.
WIDGETS_EXPORT int ScreenNumber(const QWidget *widget);
/// Null when there is no screen with that 0-based number.
WIDGETS_EXPORT QScreen *ScreenAt(int number);
/// Screen that holds the rectangle's top-left corner, else the primary one.
WIDGETS_EXPORT QScreen *ScreenOf(const QRect &rectangle);

/// Place and size of a display by its 0-based number; null when there is none.
WIDGETS_EXPORT QRect DisplayGeometry(int number);
/// Room that all displays take up together: nothing larger can be seen at once.
WIDGETS_EXPORT QSize DesktopSize();
/// As if every display that is asked for were there and had that size: for pictures of windows
/// that nobody looks at. An empty size goes back to the real displays.
WIDGETS_EXPORT void AssumeDisplays(const QSize &size);

} // namespace Widgets
