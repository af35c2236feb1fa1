#pragma once

#include <QRect>
#include <QVector>

class QColor;
class QPainter;

namespace Widgets {

/// Fills rectangles given in pixels of the device, whatever the painter's transformation is, inside
/// its clipping. Where the device is an image and the colour opaque the pixels are set directly:
/// for columns a pixel wide that is several times faster than the painter.
void fillSolid(QPainter &painter, const QVector<QRect> &rects, const QColor &color);

} // namespace Widgets
