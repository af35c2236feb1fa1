#include "widgets/actions/ActionFactoryTable.h"

#include "widgets/actions/qactionArchiverDBMgr.h"
#include "widgets/actions/qactionAuthUser.h"
#include "widgets/actions/qactionChangeComposition.h"
#include "widgets/actions/qactionChangeCompositionTemplate.h"
#include "widgets/actions/qactionCloseWindow.h"
#include "widgets/actions/qactionCreateEvent.h"
#include "widgets/actions/qactionExecuteScript.h"
#include "widgets/actions/qactionLaunchProcess.h"
#include "widgets/actions/qactionNodeCommand.h"
#include "widgets/actions/qactionOverrideCursor.h"
#include "widgets/actions/qactionPlaySound.h"
#include "widgets/actions/qactionRestoreCursor.h"
#include "widgets/actions/qactionShowAlarms.h"
#include "widgets/actions/qactionShowMenu.h"
#include "widgets/actions/qactionShowWindow.h"
#include "widgets/actions/qactionShowWindowTemplate.h"
#include "widgets/actions/qactionToggleWindow.h"
#include "widgets/actions/qactionWriteValue.h"

#include "nodes/actions/BasicAction.h"

namespace Widgets {

ActionFactoryTable::ActionFactoryTable()
{
    add<qactionPlaySound>(0x10001);
    add<qactionChangeComposition>(0x10002);
    add<qactionShowWindow>(0x10003);
    add<qactionCloseWindow>(0x10004);
    add<qactionWriteValue>(0x10005);
    add<qactionCreateEvent>(0x10006);
    add<qactionNodeCommand>(0x10007);
    add<qactionLaunchProcess>(0x10008);
    add<qactionAuthUser>(0x10009);
    add<qactionToggleWindow>(0x1000a);
    add<qactionExecuteScript>(0x1000b);
    add<qactionShowMenu>(0x1000c);
    add<qactionChangeCompositionTemplate>(0x1000d);
    add<qactionShowWindowTemplate>(0x1000e);
    add<qactionOverrideCursor>(0x10010);
    add<qactionRestoreCursor>(0x10011);
    add<qactionShowAlarms>(0x10012);
    add<qactionArchiverDBMgr>(0x106001);
}

const ActionFactoryTable &ActionFactoryTable::instance()
{
    static const ActionFactoryTable table;
    return table;
}

qBasicAction *ActionFactoryTable::create(Nodes::BasicAction *copy) const
{
    const auto creator = m_creators.find(copy->GetNodeType().GetCode());
    return creator == m_creators.end() ? nullptr : creator->second(copy);
}

} // namespace Widgets
