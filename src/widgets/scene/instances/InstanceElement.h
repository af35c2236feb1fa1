#pragma once

#include "widgets/context/SceneContext.h"

class QGraphicsProxyWidget;
class QWidget;

namespace Nodes {
class BasicWidget;
}

namespace Widgets {

/// Makes the element of a widgetInstance, as ElementFactory does; null for another node. Apart from
/// its class, which hosts elements itself and so knows the factory that asks for it.
QWidget *makeInstanceElement(Nodes::BasicWidget *node, QGraphicsProxyWidget *host,
                             const SceneContextPtr &context);

} // namespace Widgets
