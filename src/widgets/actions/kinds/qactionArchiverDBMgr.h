#pragma once

#include "nodes/actions/kinds/actionArchiverDBMgr.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Opens the manager of the database files, modally.
class qactionArchiverDBMgr : public qBasicAction
{
public:
    using Node = Nodes::actionArchiverDBMgr;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
