#include "widgets/actions/ActionFactoryTable.h"

#include "widgets/actions/qactionAuthUser.h"
#include "widgets/actions/qactionChangeComposition.h"
#include "widgets/actions/qactionCloseWindow.h"
#include "widgets/actions/qactionShowMenu.h"
#include "widgets/actions/qactionShowWindow.h"
#include "widgets/actions/qactionToggleWindow.h"
#include "widgets/actions/qactionWriteValue.h"

#include "nodes/actions/BasicAction.h"

namespace Widgets {

ActionFactoryTable::ActionFactoryTable()
{
    add<qactionChangeComposition>(0x10002);
    add<qactionShowWindow>(0x10003);
    add<qactionCloseWindow>(0x10004);
    add<qactionWriteValue>(0x10005);
    add<qactionAuthUser>(0x10009);
    add<qactionToggleWindow>(0x1000a);
    add<qactionShowMenu>(0x1000c);
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
