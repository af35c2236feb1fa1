#include "widgets/actions/kinds/qactionToggleWindow.h"

#include "widgets/actions/kinds/WindowOpening.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/OpenWindows.h"
#include "widgets/windows/OpeningTimer.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/desktop/DesktopPlacement.h"
#include "widgets/windows/desktop/WindowPlacement.h"

#include <algorithm>

namespace Widgets {

void qactionToggleWindow::Execute()
{
    const auto *node = nodeAs<Node>();
    const Nodes::BasicWindow *target = node ? node->GetWindow() : nullptr;
    if (!target || !DesktopContext::current())
        return;
    const int display = targetDisplay(node->GetDisplay());
    const QVector<QPointer<WindowBasic>> windows = find(*target, display);
    const bool isShown = std::any_of(windows.begin(), windows.end(), [](const auto &window) {
        return DesktopPlacement::outermost(window)->isVisible();
    });
    // Whoever is at the station now need not be who opened it.
    if (windows.isEmpty() || (!isShown && !WindowOpening::isAllowed(*target, trigger())))
        return;
    for (const QPointer<WindowBasic> &window : windows) {
        if (window && isShown)
            DesktopPlacement::outermost(window)->hide();
        else if (window)
            show(*window, *node, *target);
    }
}

// The first window of the node, or every open instance of a template.
QVector<QPointer<WindowBasic>> qactionToggleWindow::find(const Nodes::BasicWindow &target,
                                                         int display)
{
    QVector<QPointer<WindowBasic>> found;
    const QVector<WidgetLink> links =
        DesktopContext::current()->openWindows().of(target.GetId(), display + 1);
    for (const WidgetLink &link : links) {
        const bool isInstance = link.id != target.GetId();
        auto *window = qobject_cast<WindowBasic *>(link.widget);
        if (window && (isInstance || found.isEmpty()))
            found.append(window);
    }
    return found;
}

void qactionToggleWindow::show(WindowBasic &window, const Nodes::actionToggleWindow &node,
                               const Nodes::BasicWindow &target) const
{
    const int display = targetDisplay(node.GetDisplay());
    QWidget *outer = DesktopPlacement::outermost(&window);
    OpeningTimer::restart(window, createdAt());
    const bool isFramed = outer != &window;
    outer->setParent(DesktopContext::current()->getFrame(display),
                     isFramed ? outer->windowFlags() : Qt::Dialog | Qt::FramelessWindowHint);
    WindowPlacement::place(window, node, target, display);
    DesktopPlacement::present(window);
}

} // namespace Widgets
