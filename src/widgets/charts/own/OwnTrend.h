#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"

class QMenu;
class QWidget;

namespace Nodes {
class BasicSignal;
}

namespace Widgets {

/// Trends of signals chosen while the station runs. Values and history come only of what the
/// current user may view. GUI thread; nothing outside of the operator runtime.
class WIDGETS_EXPORT OwnTrend
{
public:
    /// Opens a window with a trend of these signals on that 0-based display, the active one when it
    /// is negative. Links to nothing and to other nodes are left out; nothing opens without any.
    static void show(const Nodes::NodeLinks &shown, int display = -1);
    /// Opens the trend that the current user keeps, or brings it forward; with the list of signals
    /// beside it while it is empty.
    static void open(int display = -1);
    /// Adds signals to that trend, keeps it, and shows it.
    static void add(const Nodes::NodeLinks &added);
    /// Keeps the current user's trend. What cannot be kept is told.
    static void keep(const Nodes::NodeLinks &shown);

    /// Entries for what an operator may want of a signal that he points at; none when it is null.
    static void fillMenu(QMenu &menu, const Nodes::BasicSignal *signal);
};

} // namespace Widgets
