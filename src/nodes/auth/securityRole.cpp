#include "nodes/auth/securityRole.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo securityRole::Kind()
{
    return KindBuilder::For<securityRole>(NodeType::enNodeSubtype(0x6002), "role", "Role", "Роль")
        .Children({NodeType(NodeType::enNodeSubtype(0x6003))});
}

} // namespace Nodes
