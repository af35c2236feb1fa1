#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/Quality.h"

#include <QRect>
#include <Qt>

class QColor;
class QPainter;
class QString;

namespace Widgets {

/// Drawing that elements share. Every function leaves the painter as it found it.
class WIDGETS_EXPORT ElementPainting
{
public:
    /// Solid frame of that width inside the box; nothing for a width of 0 or less.
    static void drawBorder(QPainter &painter, const QSize &box, int width, const QColor &color);

    /// Text turned by `angle` degrees about `centre`, aligned and clipped in the
    /// turned box less 2 border widths, with the painter's font and pen. The two characters \n
    /// in the text break a line.
    static void drawRotatedText(QPainter &painter, const QSize &box, const QPoint &centre,
                                double angle, int borderWidth, int flags, const QString &text);
    /// Rectangle in turned coordinates (origin in the centre) that the text above is laid out in.
    static QRect rotatedTextRect(const QSize &box, double angle, int borderWidth);
    /// Text as drawn: backslash-n becomes a line break.
    static QString withLineBreaks(const QString &text);

    /// Grey veil of a disabled element.
    static void drawDisabledCover(QPainter &painter, const QRect &rect);

    /// Marks a value that is not good so that it is told apart without colour: Bad is hatched with
    /// a cross, Stale has a dashed outline and a clock, Uncertain a question mark. Good draws
    /// nothing. The sign stands in the top corner that `alignment` leaves free.
    static void drawQualityMark(QPainter &painter, const QRect &rect, Nodes::Quality quality,
                                Qt::Alignment alignment);
};

} // namespace Widgets
