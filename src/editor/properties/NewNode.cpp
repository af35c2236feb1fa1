#include "editor/properties/NewNode.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/FreeName.h"
#include "nodes/model/NodesCollection.h"

namespace Editor {

Nodes::NodeLink makeClone(Nodes::NodeType type, const Nodes::ConfigNode &parent)
{
    Nodes::NodesCollection *project = parent.GetNodesCollection();
    Nodes::ConfigNode *node = project ? project->CreateNode(type, nullptr) : nullptr;
    if (!node)
        return {};
    std::vector<std::string_view> taken;
    for (const auto &child : parent.Children())
        taken.push_back(child->GetName());
    node->SetName(Nodes::FreeName(taken, node->GetName(), 1));
    return Nodes::NodeLink(node);
}

} // namespace Editor
