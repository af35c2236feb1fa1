#include "widgets/actions/qactionToggleWindow.h"

#include "widgets/actions/WindowOpening.h"
#include "widgets/windows/OpeningTimer.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/WindowManager.h"
#include "widgets/windows/WindowPlacement.h"

#include "nodes/actions/actionToggleWindow.h"

namespace Widgets {

void qactionToggleWindow::Execute()
{
    const auto *node = nodeAs<Nodes::actionToggleWindow>();
    const Nodes::BasicWindow *target = node ? node->GetWindow() : nullptr;
    if (!target || !g_pWindowManager)
        return;
    const int display = targetDisplay(node->GetDisplay());
    auto *window =
        qobject_cast<WindowBasic *>(g_pWindowManager->GetWindow(target->GetId(), display));
    if (!window)
        return;
    QWidget *outer = WindowPlacement::outermost(window);
    if (outer->isVisible()) {
        outer->hide();
        return;
    }
    // Whoever is at the station now need not be who opened it.
    if (!WindowOpening::isAllowed(*target, trigger()))
        return;
    OpeningTimer::restart(*window, createdAt());
    const bool isFramed = outer != window;
    outer->setParent(g_pWindowManager->getFrame(display),
                     isFramed ? outer->windowFlags() : Qt::Dialog | Qt::FramelessWindowHint);
    WindowPlacement::place(*window, *node, *target, display);
    WindowPlacement::present(*window);
}

} // namespace Widgets
