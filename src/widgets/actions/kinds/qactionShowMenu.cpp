#include "widgets/actions/kinds/qactionShowMenu.h"

#include "widgets/menus/MirelMenu.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/frames/FrameMapping.h"

#include "nodes/menus/BasicMenu.h"
#include "utils/convert/ValueConversions.h"

#include <QApplication>
#include <QPointer>

namespace Widgets {

namespace {

// A point beyond the display means its edge, not the display beside it. The menu itself moves
// away from the edges.
QPoint onScreen(const QPoint &point, int display)
{
    const DesktopContext *desktop = DesktopContext::current();
    const QPoint there = desktop ? desktop->mappingOn(display).toScreen(point) : point;
    const QRect area = DisplayGeometry(display);
    if (area.isNull())
        return there;
    return {qBound(area.left(), there.x(), area.right()),
            qBound(area.top(), there.y(), area.bottom())};
}

/// Menus that are up at a time; each waits in a loop of events of its own.
constexpr int maximumOpen = 8;
int openMenus = 0;

} // namespace

// A menu that no operator asked for does not take another one out of an operator's hand.
bool qactionShowMenu::isTooMany() const
{
    return DesktopContext::isStationEnding() || openMenus >= maximumOpen ||
           (!trigger().isOperators() && QApplication::activePopupWidget());
}

void qactionShowMenu::Execute()
{
    auto *node = nodeAs<Node>();
    if (!node || node->GetMenus().empty())
        return;
    auto *menuNode = dynamic_cast<Nodes::BasicMenu *>(node->GetMenus().front().GetNode());
    if (!menuNode)
        return;
    if (isTooMany())
        return;
    const int display = targetDisplay(0);
    // On the heap and guarded: the frame it belongs to may go while the menu is up.
    const DesktopContext *desktop = DesktopContext::current();
    QWidget *frame = desktop ? desktop->getFrame(display) : nullptr;
    const QPointer<MirelMenu> menu = new MirelMenu(node, menuNode, frame);
    const QPoint point = node->isOpenedAtTrigger() && trigger().point
                             ? *trigger().point
                             : onScreen(Utils::NPointToQPoint(node->GetPoint()), display);
    ++openMenus;
    menu->exec(point);
    --openMenus;
    if (menu)
        menu->deleteLater();
}

} // namespace Widgets
