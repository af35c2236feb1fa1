#include "widgets/actions/ActionFactoryTable.h"

#include "widgets/actions/kinds/qactionArchiverDBMgr.h"
#include "widgets/actions/kinds/qactionAuthUser.h"
#include "widgets/actions/kinds/qactionChangeComposition.h"
#include "widgets/actions/kinds/qactionChangeCompositionTemplate.h"
#include "widgets/actions/kinds/qactionCloseWindow.h"
#include "widgets/actions/kinds/qactionCreateEvent.h"
#include "widgets/actions/kinds/qactionExecuteScript.h"
#include "widgets/actions/kinds/qactionLaunchProcess.h"
#include "widgets/actions/kinds/qactionNodeCommand.h"
#include "widgets/actions/kinds/qactionOverrideCursor.h"
#include "widgets/actions/kinds/qactionPlaySound.h"
#include "widgets/actions/kinds/qactionRestoreCursor.h"
#include "widgets/actions/kinds/qactionShowAlarms.h"
#include "widgets/actions/kinds/qactionShowMenu.h"
#include "widgets/actions/kinds/qactionShowWindow.h"
#include "widgets/actions/kinds/qactionShowWindowTemplate.h"
#include "widgets/actions/kinds/qactionToggleWindow.h"
#include "widgets/actions/kinds/qactionWriteValue.h"

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
