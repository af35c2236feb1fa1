#include "nodes/visual/windows/SeenSize.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

void CheckSeenSize(const ConfigNode &node, const NSize &size, ValidationResults &results)
{
    if (size.width <= LargestSeenSide && size.height <= LargestSeenSide)
        return;
    results.Add(node.GetNodeLink(), Result(&node, Result::InvalidArgument, "width, height"),
                node.GetName() + ": размер " + std::to_string(size.width) + "x" +
                    std::to_string(size.height) +
                    " больше любых дисплеев, показана будет только часть. Уменьшите его или "
                    "разделите содержимое на несколько окон.");
}

} // namespace Nodes
