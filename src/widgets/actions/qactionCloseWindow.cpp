#include "widgets/actions/qactionCloseWindow.h"

#include "widgets/windows/Access.h"
#include "widgets/windows/FrameWindow.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/actions/actionCloseWindow.h"

#include <QApplication>

#include <algorithm>

namespace Widgets {

void qactionCloseWindow::Execute()
{
    const auto *node = nodeAs<Nodes::actionCloseWindow>();
    if (!node || !g_pWindowManager)
        return;
    if (node->isCurrentWindow())
        closeCurrent();
    else
        closeConfigured(*node);
}

void qactionCloseWindow::closeCurrent() const
{
    QWidget *active = QApplication::activeWindow();
    if (const auto *frame = qobject_cast<FrameWindow *>(active))
        active = frame->windowBasic();
    const QVector<WidgetLink> &windows = g_pWindowManager->windows();
    const auto found = std::find_if(windows.cbegin(), windows.cend(), [active](const auto &link) {
        return active && link.widget == active;
    });
    if (found == windows.cend()) {
        log("qactionCloseWindow - error search window");
        return;
    }
    const WidgetLink link = *found;
    if (!HasPrivilege(Nodes::PrivilegeClose, Nodes::NodeLink(link.id).GetNode()))
        return;
    g_pWindowManager->closeWindow(link.id, link.widget);
    log("qactionCloseWindow - hiding current window");
    g_pWindowManager->letEventsRun();
}

void qactionCloseWindow::closeConfigured(const Nodes::actionCloseWindow &node) const
{
    const Nodes::BasicWindow *window = node.GetWindow();
    if (!window || !HasPrivilege(Nodes::PrivilegeClose, window))
        return;
    g_pWindowManager->closeAllWindow(window->GetId(), node.GetDisplay());
    log("qactionCloseWindow - hiding window");
    g_pWindowManager->letEventsRun();
}

} // namespace Widgets
