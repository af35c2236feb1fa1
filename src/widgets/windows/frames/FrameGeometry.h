#pragma once

#include "widgets/WidgetsExport.h"

#include <QRect>
#include <QVector>

namespace Widgets {

/// Arithmetic of frame windows, apart from widgets and screens.
struct WIDGETS_EXPORT FrameGeometry
{
    /// Edges of a window, as flags.
    enum Edge {
        NoEdge = 0,
        LeftEdge = 0x1,
        RightEdge = 0x10,
        TopEdge = 0x100,
        BottomEdge = 0x1000
    };

    /// Pixels at the top of any window by which it is caught and moved.
    static constexpr int TitleStrip = 25;

    /// `start` after its edges were dragged by `delta`. The opposite
    /// edges stay where they are, also when a size limit stops the drag.
    static QRect resized(const QRect &start, int edges, const QPoint &delta, const QSize &minimum,
                         const QSize &maximum);

    /// Nearest position of `frame` at which its title bar can still be caught on one of `screens`.
    static QPoint reachable(const QRect &frame, int titleHeight, const QVector<QRect> &screens);
    /// The same for the screens of the application.
    static QPoint reachable(const QRect &frame, int titleHeight);
    /// Nearest position at which all of `frame` is on one of `screens`; of one that is larger the
    /// top and the left.
    static QPoint inside(const QRect &frame, const QVector<QRect> &screens);
    static QPoint inside(const QRect &frame);
};

} // namespace Widgets
