#pragma once

#include "widgets/WidgetsExport.h"

namespace Nodes {
class BasicAction;
class NodeType;
} // namespace Nodes

namespace Widgets {

class qBasicAction;

/// Which class runs which kind of action node. A new action is its own files and one line in the
/// table of ActionFactoryTable.cpp. Any thread.
class WIDGETS_EXPORT ActionFactoryTable
{
public:
    /// Action object on that node copy; null for kinds without an action class.
    static qBasicAction *create(Nodes::BasicAction *copy);
    static bool knows(const Nodes::NodeType &type);
};

} // namespace Widgets
