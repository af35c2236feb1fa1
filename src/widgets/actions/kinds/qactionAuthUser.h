#pragma once

#include "nodes/actions/kinds/actionAuthUser.h"
#include "widgets/actions/qBasicAction.h"

namespace Nodes {
class systemAuthentication;
}

namespace Widgets {

/// Logs a user in: the configured one, else whom the operator chooses in a modal window. Or logs
/// the current one out.
class qactionAuthUser : public qBasicAction
{
public:
    using Node = Nodes::actionAuthUser;

    using qBasicAction::qBasicAction;
    void Execute() override;

private:
    void passOn(const Nodes::systemAuthentication &users) const;
};

} // namespace Widgets
