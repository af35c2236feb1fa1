#include "widgets/actions/kinds/WindowOpening.h"

#include "widgets/windows/Access.h"
#include "widgets/windows/OpeningTimer.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/WindowManager.h"
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
    if (WindowManager::GetWorkMode() != Nodes::WorkModeRuntime || demand())
        return true;
    ShowAccessDenied(trigger);
    // What triggered it should not have been usable: the rights have changed since it was judged.
    if (Nodes::AccessDeniedActionFor(window) != Nodes::AccessDeniedRefuse && g_pWindowManager)
        g_pWindowManager->judgeAccess();
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
    const WidgetLink link =
        g_pWindowManager->createWindow(&window, g_pWindowManager->getFrame(display));
    const QPointer<WindowBasic> opened = qobject_cast<WindowBasic *>(link.widget);
    if (!opened)
        return nullptr;
    OpeningTimer::restart(*opened, since);
    g_pWindowManager->letEventsRun();
    if (!opened)
        return nullptr;
    WindowPlacement::decorate(*opened);
    WindowPlacement::place(*opened, action, window, display);
    opened->setWindowTitle(QString::fromStdString(window.GetTitle()));
    DesktopPlacement::present(*opened);
    return opened;
}

} // namespace Widgets
