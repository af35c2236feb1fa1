#include "widgets/charts/painting/BarFreePlace.h"

#include <QToolBar>

#include <algorithm>

namespace Widgets {

QRectF BarFreePlace(const QWidget &canvas, const QRectF &place)
{
    constexpr double gap = 4;
    QList<QToolBar *> bars = canvas.findChildren<QToolBar *>(QString(), Qt::FindDirectChildrenOnly);
    std::sort(bars.begin(), bars.end(),
              [](const QToolBar *a, const QToolBar *b) { return a->x() < b->x(); });
    QRectF free = place;
    for (const QToolBar *bar : bars)
        if (!bar->isHidden() && free.intersects(bar->geometry()))
            free.moveLeft(bar->geometry().right() + gap);
    return free.right() <= canvas.width() ? free : place;
}

} // namespace Widgets
