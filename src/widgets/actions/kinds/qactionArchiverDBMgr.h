#pragma once

#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Opens the manager of the database files, modally.
class qactionArchiverDBMgr : public qBasicAction
{
public:
    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
