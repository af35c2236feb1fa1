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
#include "widgets/actions/kinds/qactionReport.h"
#include "widgets/actions/kinds/qactionRestoreCursor.h"
#include "widgets/actions/kinds/qactionShowAlarms.h"
#include "widgets/actions/kinds/qactionShowMenu.h"
#include "widgets/actions/kinds/qactionShowProblems.h"
#include "widgets/actions/kinds/qactionShowTrend.h"
#include "widgets/actions/kinds/qactionShowWindow.h"
#include "widgets/actions/kinds/qactionShowWindowTemplate.h"
#include "widgets/actions/kinds/qactionToggleWindow.h"
#include "widgets/actions/kinds/qactionWriteValue.h"

#include "nodes/kinds/KindRows.h"

#include <type_traits>

namespace Widgets {

namespace {

using Row = Nodes::KindRow<qBasicAction *(*)(Nodes::BasicAction *)>;

/// Action::Node is the node class that the action runs; its code stands there.
template <class Action> constexpr Row runs()
{
    static_assert(std::is_base_of_v<Nodes::BasicAction, typename Action::Node>);
    return {Action::Node::Code,
            [](Nodes::BasicAction *copy) -> qBasicAction * { return new Action(copy); }};
}

constexpr Row rows[] = {
    runs<qactionPlaySound>(),
    runs<qactionChangeComposition>(),
    runs<qactionShowWindow>(),
    runs<qactionCloseWindow>(),
    runs<qactionWriteValue>(),
    runs<qactionCreateEvent>(),
    runs<qactionNodeCommand>(),
    runs<qactionLaunchProcess>(),
    runs<qactionAuthUser>(),
    runs<qactionToggleWindow>(),
    runs<qactionExecuteScript>(),
    runs<qactionShowMenu>(),
    runs<qactionChangeCompositionTemplate>(),
    runs<qactionShowWindowTemplate>(),
    runs<qactionOverrideCursor>(),
    runs<qactionRestoreCursor>(),
    runs<qactionShowAlarms>(),
    runs<qactionShowProblems>(),
    runs<qactionShowTrend>(),
    runs<qactionReport>(),
    runs<qactionArchiverDBMgr>(),
};
static_assert(Nodes::AreDistinct(rows), "two actions for one kind: look at their Node");

} // namespace

qBasicAction *ActionFactoryTable::create(Nodes::BasicAction *copy) const
{
    const auto creator = Nodes::FindCreator(rows, copy->GetNodeType());
    return creator ? creator(copy) : nullptr;
}

bool ActionFactoryTable::knows(const Nodes::NodeType &type) const
{
    return Nodes::FindCreator(rows, type);
}

} // namespace Widgets
