#include "nodes/auth/securityRole.h"

#include "nodes/auth/securityGrant.h"
#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo securityRole::Kind()
{
    return KindBuilder::For<securityRole>("role", "Role", "Роль")
        .Children({NodeType(securityGrant::Code)});
}

} // namespace Nodes
