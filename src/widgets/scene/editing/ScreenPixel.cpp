#include "widgets/scene/editing/ScreenPixel.h"

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>

#include <cmath>

namespace Widgets {

double screenPixel(const QGraphicsItem &item)
{
    constexpr double least = 1.0 / 32;
    constexpr double greatest = 8;
    const QGraphicsScene *scene = item.scene();
    const QList<QGraphicsView *> views = scene ? scene->views() : QList<QGraphicsView *>();
    const double shown = views.isEmpty() ? 1 : std::abs(views.first()->transform().m11());
    return 1 / qBound(1 / greatest, shown, 1 / least);
}

} // namespace Widgets
