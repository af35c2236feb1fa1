#include "widgets/windows/navigation/SourceJump.h"

#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/OpenWindows.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/navigation/JumpArrival.h"
#include "widgets/windows/navigation/ShownPlace.h"

#include "nodes/model/ConfigNode.h"

#include <QWidget>

namespace Widgets {

namespace {

/// The display whose window the actions are to work on: that of the gesture if the window is there.
int displayOf(const ShownPlace &place, OpenWindows &windows, int display)
{
    const QWidget *window = windows.find(place.window, display);
    if (!window && place.kind == ShownPlace::Page)
        window = windows.find(place.window);
    return window ? ScreenNumber(window) : display;
}

Nodes::Result travel(const ShownPlace &place, DesktopContext &desktop, int display)
{
    ActionDispatcher &dispatcher = desktop.dispatcher();
    ActionTrigger trigger = dispatcher.triggerNow(ActionOrigin::Gesture);
    trigger.display = displayOf(place, desktop.openWindows(), display);
    if (const Nodes::Result pushed = dispatcher.push(place.road, trigger); !pushed)
        return pushed;
    auto *arrival = new JumpArrival(place, *trigger.display);
    arrival->setTrigger(trigger);
    dispatcher.queue({arrival});
    return {};
}

} // namespace

bool SourceJump::canJump(const Nodes::NodeLink &source)
{
    const Nodes::ConfigNode *node = source.GetNode();
    return node && !ShownPlace::of(*node).empty();
}

Nodes::Result SourceJump::jump(const Nodes::NodeLink &source, int display)
{
    const Nodes::ConfigNode *node = source.GetNode();
    DesktopContext *desktop = DesktopContext::current();
    const std::vector<ShownPlace> places =
        node && desktop ? ShownPlace::of(*node) : std::vector<ShownPlace>();
    if (places.empty())
        return Nodes::Result(node, Nodes::Result::NotFound, "no window or page shows the node");
    const ShownPlace &best = places.front();
    if (ProxyWidget *element = JumpArrival::find(best, display)) {
        JumpArrival::show(*element);
        return {};
    }
    if (best.road.empty())
        return Nodes::Result(node, Nodes::Result::NotAvailable,
                             "the element is hidden, or its frame is not open");
    return travel(best, *desktop, display);
}

} // namespace Widgets
