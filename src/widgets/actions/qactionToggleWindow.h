#pragma once

#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Shows a hidden window or hides a shown one; a window that is not open is left alone.
class qactionToggleWindow : public qBasicAction
{
public:
    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
