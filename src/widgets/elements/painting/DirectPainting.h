#pragma once

#include "widgets/WidgetsExport.h"

class QPainter;
class QWidget;

namespace Widgets {

/// An element that draws itself completely and has no child widgets. Its host then paints it
/// without going through a widget's rendering, which costs several times the drawing itself.
class WIDGETS_EXPORT DirectPainting
{
public:
    virtual ~DirectPainting();
    /// Draws the element, background included, at the painter's origin. Leaves the painter's
    /// transformation and clip as they were.
    virtual void paintDirectly(QPainter &painter) = 0;

protected:
    /// Schedules one painting of the whole element, which is the caller itself. Unlike the widget's
    /// own update() this takes no event on its way to the host.
    static void repaint(QWidget &element);
};

} // namespace Widgets
