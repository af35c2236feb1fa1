#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/services/AuthPriv.h"

namespace Nodes {
class BasicNode;
}

namespace Widgets {

/// Whether the current user may do `privilege` with `node`, or with the whole project when it is
/// null. Everybody may where there are no users.
WIDGETS_EXPORT bool HasPrivilege(Nodes::enPrivilegeType privilege, const Nodes::BasicNode *node);

} // namespace Widgets
