#include "widgets/elements/painting/DirectPainting.h"

#include <QGraphicsProxyWidget>
#include <QWidget>

namespace Widgets {

DirectPainting::~DirectPainting() = default;

void DirectPainting::repaint(QWidget &element)
{
    if (QGraphicsProxyWidget *host = element.graphicsProxyWidget())
        host->QGraphicsItem::update();
    else
        element.update();
}

} // namespace Widgets
