#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/windows/navigation/ShownPlace.h"

#include "nodes/model/links/NodeLink.h"

#include <vector>

namespace Nodes {
class BasicTemplateAction;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

/// How an operator gets to a window or page: by the actions that are configured for it, with what
/// stands beside them in their list to tell which page is shown. GUI thread.
struct WIDGETS_EXPORT NavigationRoad
{
    ShownPlace::enKind kind = ShownPlace::Page;
    unsigned long window = 0; ///< node that the open window goes by
    Nodes::NodeLinks actions; ///< empty where it is always shown

    /// Of a window or composition. None to a template: it is opened for something.
    static std::vector<NavigationRoad> to(const Nodes::ConfigNode &ground);
    /// To the instance that the action opens; none or one.
    static std::vector<NavigationRoad> by(const Nodes::BasicTemplateAction &action);
};

} // namespace Widgets
