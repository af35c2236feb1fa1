#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/auth/AuthPriv.h"

#include <string>

class QObject;
class QString;

namespace Nodes {
class BasicNode;
class Result;
} // namespace Nodes

namespace Widgets {

/// Whether the current user may do `privilege` with `node`, or with the whole project when it is
/// null. Everybody may where there are no users.
WIDGETS_EXPORT bool HasPrivilege(Nodes::enPrivilegeType privilege, const Nodes::BasicNode *node);

/// Tells the operator, modally, that an action was refused for want of rights.
WIDGETS_EXPORT void ShowAccessDenied();
/// Tells the operator, modally, why `what` failed; nothing for success and silent refusals.
WIDGETS_EXPORT void ShowActionResult(const Nodes::Result &result, const std::string &what);
/// Tells the operator, modally, that an action failed.
WIDGETS_EXPORT void ShowActionError(const QString &text);
/// The same without waiting for the answer, so that other actions go on; what stands on the screen
/// already is not told twice. The message goes with `owner`.
WIDGETS_EXPORT void TellActionError(const QString &text, const QObject *owner);

} // namespace Widgets
