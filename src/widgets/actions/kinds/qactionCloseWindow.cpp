#include "widgets/actions/kinds/qactionCloseWindow.h"

#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/windows/Access.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/OpenWindows.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/frames/FrameWindow.h"

#include <QApplication>
#include <QPointer>

#include <algorithm>

namespace Widgets {

void qactionCloseWindow::Execute()
{
    const auto *node = nodeAs<Node>();
    if (!node || !DesktopContext::current())
        return;
    if (node->isCurrentWindow())
        closeCurrent();
    else
        closeConfigured(*node);
}

bool qactionCloseWindow::isAllowed(const Nodes::ConfigNode *window) const
{
    const Nodes::ActingScope acting = act();
    return HasPrivilege(Nodes::PrivilegeClose, window);
}

// Whoever is logged in by now: the right to close was that of who triggered it.
void qactionCloseWindow::close(const WidgetLink &link)
{
    if (!DesktopContext::current()->openWindows().links().contains(link))
        return; // an earlier one took it along
    const QPointer<WindowBasic> window = qobject_cast<WindowBasic *>(link.widget);
    if (window)
        window->setCloseAllowed(true);
    DesktopContext::current()->openWindows().close(link.id, link.widget);
    if (window)
        window->setCloseAllowed(false);
}

void qactionCloseWindow::closeCurrent() const
{
    QWidget *active = QApplication::activeWindow();
    if (const auto *frame = qobject_cast<FrameWindow *>(active))
        active = frame->windowBasic();
    const QVector<WidgetLink> &windows = DesktopContext::current()->openWindows().links();
    const auto found = std::find_if(windows.cbegin(), windows.cend(), [active](const auto &link) {
        return active && link.widget == active;
    });
    if (found == windows.cend()) {
        log("qactionCloseWindow - error search window");
        return;
    }
    const WidgetLink link = *found;
    if (!isAllowed(Nodes::NodeLink(link.id).GetNode()))
        return;
    close(link);
    log("qactionCloseWindow - hiding current window");
    DesktopContext::current()->dispatcher().letEventsRun();
}

void qactionCloseWindow::closeConfigured(const Nodes::actionCloseWindow &node) const
{
    const Nodes::BasicWindow *window = node.GetWindow();
    if (!window || !isAllowed(window))
        return;
    const QVector<WidgetLink> links =
        DesktopContext::current()->openWindows().of(window->GetId(), node.GetDisplay());
    std::for_each(links.begin(), links.end(), &close);
    log("qactionCloseWindow - hiding window");
    DesktopContext::current()->dispatcher().letEventsRun();
}

} // namespace Widgets
