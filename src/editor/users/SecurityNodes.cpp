#include "editor/users/SecurityNodes.h"

#include "nodes/auth/securityRole.h"
#include "nodes/auth/securityUser.h"
#include "nodes/model/NodesCollection.h"

namespace Editor::SecurityNodes {

namespace {

Nodes::NodeLinks find(const Nodes::NodeLink &authentication, Nodes::NodeType::enNodeSubtype code)
{
    Nodes::NodeLinks found;
    if (const Nodes::NodesCollection *project = authentication.GetNodesCollection())
        project->FindNodes(Nodes::NodeType(code), &found);
    return found;
}

} // namespace

Nodes::NodeLinks users(const Nodes::NodeLink &authentication)
{
    return find(authentication, Nodes::securityUser::Code);
}

Nodes::NodeLinks roles(const Nodes::NodeLink &authentication)
{
    return find(authentication, Nodes::securityRole::Code);
}

} // namespace Editor::SecurityNodes
