#pragma once

#include "widgets/WidgetsExport.h"

#include <QColor>

class QPainter;
class QRectF;

namespace Widgets {

/// Priorities 1 (highest) to 4 as they look everywhere: told apart by shape and number as well as
/// by colour.
class WIDGETS_EXPORT AlarmShapes
{
public:
    static QColor color(int priority);
    /// Of text on that colour.
    static QColor ink(int priority);
    /// Square, triangle, diamond, circle, with the painter's pen and brush.
    static void draw(QPainter &painter, int priority, const QRectF &rect);
    /// The same with the priority's number in it.
    static void drawNumbered(QPainter &painter, int priority, const QRectF &rect,
                             const QColor &number);
};

} // namespace Widgets
