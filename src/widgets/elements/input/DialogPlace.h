#pragma once

#include "widgets/WidgetsExport.h"

#include <QPoint>

class QRect;
class QSize;
class QWidget;

namespace Widgets {

/// Where the dialog of an input opens: beside the element, which stays in sight. GUI thread.
struct WIDGETS_EXPORT DialogPlace
{
    /// Puts a dialog that is not shown yet beside the element, on its screen.
    static void besideElement(QWidget &dialog, const QWidget &element);
    /// Place for something of that size on `screen` that leaves `what` in sight: below, above, to
    /// the right or left of it, else as near as `screen` allows. `gap` is kept free between the
    /// two.
    static QPoint beside(const QRect &what, const QSize &size, const QRect &screen, int gap);
};

} // namespace Widgets
