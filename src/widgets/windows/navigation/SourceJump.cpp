#include "widgets/windows/navigation/SourceJump.h"

#include "nodes/model/ConfigNode.h"

namespace Widgets {

bool SourceJump::canJump(const Nodes::NodeLink & /*source*/)
{
    return false;
}

Nodes::Result SourceJump::jump(const Nodes::NodeLink &source, int /*display*/)
{
    return Nodes::Result(source.GetNode(), Nodes::Result::NotFound,
                         "no window or page shows the node");
}

} // namespace Widgets
