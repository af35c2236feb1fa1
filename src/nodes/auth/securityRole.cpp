#include "nodes/auth/securityRole.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo securityRole::Kind()
{
    return KindBuilder::For<securityRole>(NodeType::enNodeSubtype(0x20001), "role", "Role", "Роль")
        .Children({NodeType(NodeType::enNodeSubtype(0x20003))});
}

} // namespace Nodes
