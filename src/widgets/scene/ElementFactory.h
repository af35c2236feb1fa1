#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/SceneContext.h"

#include <vector>

class QGraphicsProxyWidget;
class QWidget;

namespace Nodes {
class BasicWidget;
}

namespace Widgets {

/// Creates the element that shows a node, by the node's full subtype code. A new element is its
/// own files and one line in the table of ElementFactory.cpp.
class WIDGETS_EXPORT ElementFactory
{
public:
    /// Null for an unknown code or a node that is not of the class the element shows. `host` is
    /// the item that will own the element; some elements keep it, and it may be null.
    static QWidget *create(Nodes::BasicWidget *node, QGraphicsProxyWidget *host,
                           const SceneContextPtr &context = SceneContext::process());
    /// Full subtype codes of the kinds that have an element.
    static std::vector<unsigned> codes();
};

} // namespace Widgets
