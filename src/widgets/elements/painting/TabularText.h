#pragma once

#include "widgets/WidgetsExport.h"

#include <Qt>

class QFont;
class QPainter;
class QRectF;
class QString;

namespace Widgets {

/// Text whose digits are all equally wide, whatever the font, so that a changing number stands
/// still and columns of numbers line up.
class WIDGETS_EXPORT TabularText
{
public:
    /// Pixels.
    static double width(const QFont &font, const QString &text);
    /// One line, with the painter's font and pen; not clipped.
    static void draw(QPainter &painter, const QRectF &rect, Qt::Alignment alignment,
                     const QString &text);
};

} // namespace Widgets
