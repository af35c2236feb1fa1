#include "widgets/windows/Access.h"

#include "widgets/context/ProcessContext.h"

#include "nodes/model/services/AccessCheck.h"
#include "nodes/system/systemCore.h"

namespace Widgets {

bool HasPrivilege(Nodes::enPrivilegeType privilege, const Nodes::BasicNode *node)
{
    const auto *guarded = static_cast<const Nodes::ConfigNode *>(node);
    if (!guarded)
        guarded = ProcessContext::model();
    return !guarded || Nodes::CheckAccess(privilege, *guarded);
}

} // namespace Widgets
