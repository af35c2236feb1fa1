#include "widgets/actions/kinds/WindowOpening.h"

#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/actions/running/Refusals.h"
#include "widgets/context/SceneContext.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/OpenWindows.h"
#include "widgets/windows/OpeningTimer.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/WindowBuilder.h"
#include "widgets/windows/desktop/DesktopPlacement.h"
#include "widgets/windows/desktop/WindowPlacement.h"

#include "nodes/actions/BasicOpeningAction.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/services/AccessCheck.h"

#include <QPointer>

namespace Widgets {

bool WindowOpening::isAllowed(const Nodes::BasicWindow &window, const ActionTrigger &trigger)
{
    const std::string what = "открытие окна «" + window.GetName() + "»";
    const auto demand = [&] {
        const Nodes::ActingScope acting(trigger.user ? *trigger.user : Nodes::ActingUser());
        return Nodes::DemandAccess(Nodes::PrivilegeOpen, window, what) &&
               Nodes::DemandAccess(Nodes::PrivilegeView, window, what);
    };
    if (!SceneContext::process()->isRuntime() || demand())
        return true;
    ShowAccessDenied(trigger);
    // What triggered it should not have been usable: the rights have changed since it was judged.
    DesktopContext *desktop = DesktopContext::current();
    if (Nodes::AccessDeniedActionFor(window) != Nodes::AccessDeniedRefuse && desktop)
        WindowBuilder::judgeAccess(desktop->openWindows());
    return false;
}

void WindowOpening::bringForward(QWidget &window, qBasicAction::Clock::time_point since)
{
    auto *runtimeWindow = qobject_cast<WindowBasic *>(&window);
    if (runtimeWindow && !runtimeWindow->isVisible())
        OpeningTimer::restart(*runtimeWindow, since);
    DesktopPlacement::present(window);
}

WindowBasic *WindowOpening::open(const Nodes::BasicOpeningAction &action,
                                 Nodes::BasicWindow &window, int display,
                                 qBasicAction::Clock::time_point since)
{
    DesktopContext &desktop = *DesktopContext::current();
    const WidgetLink link =
        WindowBuilder::open(desktop.openWindows(), &window, desktop.getFrame(display));
    const QPointer<WindowBasic> opened = qobject_cast<WindowBasic *>(link.widget);
    if (!opened)
        return nullptr;
    OpeningTimer::restart(*opened, since);
    desktop.dispatcher().letEventsRun();
    if (!opened)
        return nullptr;
    WindowPlacement::decorate(*opened);
    WindowPlacement::place(*opened, action, window, display);
    opened->setWindowTitle(QString::fromStdString(window.GetTitle()));
    DesktopPlacement::present(*opened);
    return opened;
}

} // namespace Widgets
