#pragma once

#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Opens an instance of a template window, or brings forward one with the same arguments.
class qactionShowWindowTemplate : public qBasicAction
{
public:
    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
