#include "widgets/actions/qactionShowWindow.h"

#include "widgets/windows/Access.h"
#include "widgets/windows/OpeningTimer.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/WindowManager.h"
#include "widgets/windows/WindowPlacement.h"

#include "nodes/actions/actionShowWindow.h"

#include <QPointer>

namespace Widgets {

using Nodes::actionShowWindow;

void qactionShowWindow::Execute()
{
    const auto *node = nodeAs<actionShowWindow>();
    Nodes::BasicWindow *window = node ? node->GetWindow() : nullptr;
    if (!window || !g_pWindowManager)
        return;
    const bool isRuntime = WindowManager::GetWorkMode() == Nodes::WorkModeRuntime;
    if (isRuntime && !HasPrivilege(Nodes::PrivilegeOpen, window)) {
        ShowAccessDenied();
        return;
    }
    if (!bringForward(*node, *window))
        open(*node, *window);
}

bool qactionShowWindow::bringForward(const actionShowWindow &node,
                                     const Nodes::BasicWindow &window) const
{
    QWidget *found = nullptr;
    if (node.GetOpenMode() == actionShowWindow::OpenReuseOnDisplay)
        found = g_pWindowManager->GetWindow(window.GetId(), targetDisplay(node.GetDisplay()));
    else if (node.GetOpenMode() == actionShowWindow::OpenReuseAnywhere)
        found = g_pWindowManager->GetWindow(window.GetId());
    if (!found)
        return false;
    auto *runtimeWindow = qobject_cast<WindowBasic *>(found);
    if (runtimeWindow && !runtimeWindow->isVisible())
        OpeningTimer::restart(*runtimeWindow, createdAt());
    WindowPlacement::present(*found);
    return true;
}

void qactionShowWindow::open(const actionShowWindow &node, Nodes::BasicWindow &window) const
{
    const int display = targetDisplay(node.GetDisplay());
    const WidgetLink link =
        g_pWindowManager->createWindow(&window, g_pWindowManager->getFrame(display));
    QPointer<WindowBasic> opened = qobject_cast<WindowBasic *>(link.widget);
    if (!opened)
        return;
    OpeningTimer::restart(*opened, createdAt());
    g_pWindowManager->letEventsRun();
    if (!opened)
        return;
    WindowPlacement::decorate(*opened);
    WindowPlacement::place(*opened, WindowPlacement::clientArea(node, window, display));
    opened->setWindowTitle(QString::fromStdString(window.GetName()));
    WindowPlacement::present(*opened);
    log("Действие \"открытие окна\"");
    g_pWindowManager->letEventsRun();
}

} // namespace Widgets
