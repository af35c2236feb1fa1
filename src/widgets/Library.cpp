#include "widgets/Library.h"

#include "widgets/actions/ActionFactoryTable.h"
#include "widgets/actions/ActionManager.h"
#include "widgets/context/ProcessContext.h"
#include "widgets/events/AlarmDesk.h"

namespace Widgets {

std::unique_ptr<ProcessContext> Library::makeContext(Nodes::systemCore *core)
{
    ActionManager &actions = ActionManager::getInstance();
    return std::make_unique<ProcessContext>(core, actions, actions);
}

const ActionKinds &Library::actionKinds()
{
    static const ActionFactoryTable table;
    return table;
}

std::unique_ptr<AlarmView> Library::makeAlarmView(Nodes::systemAlarming *alarming)
{
    return std::make_unique<AlarmDesk>(alarming);
}

} // namespace Widgets
