#pragma once

#include "widgets/actions/qBasicAction.h"

namespace Nodes {
class actionCloseWindow;
}

namespace Widgets {

/// Closes the active window or a configured one, when the user may; silent otherwise.
class qactionCloseWindow : public qBasicAction
{
public:
    using qBasicAction::qBasicAction;
    void Execute() override;

private:
    void closeCurrent() const;
    void closeConfigured(const Nodes::actionCloseWindow &node) const;
};

} // namespace Widgets
