#pragma once

#include <QRectF>

class QWidget;

namespace Widgets {

/// Where a text can stand on a canvas without being covered by its tool bars: at `place`, or as
/// little to the right of it as needed. `place` itself where there is no room. GUI thread.
QRectF BarFreePlace(const QWidget &canvas, const QRectF &place);

} // namespace Widgets
