#pragma once

class QGraphicsItem;

namespace Widgets {

/// Scene pixels that one pixel of the screen takes where the item's scene is shown first; 1 where
/// it is not shown, or the item is in none. Bounded to what can be worked with, 1/32 to 8.
double screenPixel(const QGraphicsItem &item);

} // namespace Widgets
