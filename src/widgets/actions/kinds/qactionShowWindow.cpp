#include "widgets/actions/kinds/qactionShowWindow.h"

#include "widgets/actions/kinds/WindowOpening.h"
#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/OpenWindows.h"

#include "nodes/visual/windows/BasicWindow.h"

namespace Widgets {

using Nodes::actionShowWindow;

void qactionShowWindow::Execute()
{
    const auto *node = nodeAs<Node>();
    Nodes::BasicWindow *window = node ? node->GetWindow() : nullptr;
    if (!window || !DesktopContext::current() || !WindowOpening::isAllowed(*window, trigger()))
        return;
    const int display = targetDisplay(node->GetDisplay());
    if (QWidget *found = findOpen(*node, *window, display)) {
        WindowOpening::bringForward(*found, createdAt());
    } else if (WindowOpening::open(*node, *window, display, createdAt())) {
        log("Действие \"открытие окна\"");
        DesktopContext::current()->dispatcher().letEventsRun();
    }
}

QWidget *qactionShowWindow::findOpen(const actionShowWindow &node, const Nodes::BasicWindow &window,
                                     int display)
{
    switch (node.GetOpenMode()) {
    case actionShowWindow::OpenReuseOnDisplay:
        return DesktopContext::current()->openWindows().find(window.GetId(), display);
    case actionShowWindow::OpenReuseAnywhere:
        return DesktopContext::current()->openWindows().find(window.GetId());
    default:
        return nullptr;
    }
}

} // namespace Widgets
