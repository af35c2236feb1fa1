#include "utils/undo/DistinctNodes.h"

#include "nodes/model/ConfigNode.h"

#include <unordered_set>

namespace Utils {

Nodes::NodesArray distinctNodes(const Nodes::NodeLinks &links)
{
    std::unordered_set<const Nodes::ConfigNode *> all;
    for (const Nodes::NodeLink &link : links)
        all.insert(link.GetNode());
    all.erase(nullptr);
    const auto isBelowAny = [&all](const Nodes::ConfigNode *node) {
        while ((node = node->GetParent()) != nullptr) {
            if (all.count(node) != 0)
                return true;
        }
        return false;
    };
    std::unordered_set<const Nodes::ConfigNode *> taken;
    Nodes::NodesArray nodes;
    for (const Nodes::NodeLink &link : links) {
        const Nodes::ConfigNode *node = link.GetNode();
        if (node && !isBelowAny(node) && taken.insert(node).second)
            nodes.push_back(link);
    }
    return nodes;
}

} // namespace Utils
