#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/actions/qBasicAction.h"
#include "widgets/windows/navigation/ShownPlace.h"

namespace Widgets {

class ProxyWidget;

/// Queued behind the actions that lead to a place: brings the window forward and marks the element
/// there, if they led there and the operator may see it.
class WIDGETS_EXPORT JumpArrival : public qBasicAction
{
public:
    /// `display`, 0-based, is looked at first.
    JumpArrival(ShownPlace place, int display);

    void Execute() override;

    /// Where the place can be seen now; null when nowhere. GUI thread.
    static ProxyWidget *find(const ShownPlace &place, int display);
    /// Brings the window around to the front and marks the element.
    static void show(ProxyWidget &element);

private:
    ShownPlace m_place;
    int m_display;
};

} // namespace Widgets
