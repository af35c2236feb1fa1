#pragma once

#include "widgets/charts/pickers/CursorMarkers.h"
#include "widgets/charts/pickers/IPickerCanvas.h"

#include <QPen>

namespace Widgets::CursorLook {

/// Looks that the markers of all pickers share.

/// Red for the first cursor; the second is told from it without colour, too.
QPen linePen(IPickerCanvas::enCursor cursor);
/// Marker of a point with a diagonal cross, in the axes of the item; its label goes left or right
/// of it, where there is more room.
CursorMarker *makePoint(const QwtPlotItem &item, const QColor &frame, const QPointF &point,
                        const QString &label, IPickerCanvas::enCursor cursor);

} // namespace Widgets::CursorLook
