#pragma once

#include "widgets/WidgetsExport.h"

class QWidget;

namespace Nodes {
class systemAlarming;
class systemVisualization;
} // namespace Nodes

namespace Widgets {

class ActionDispatcher;
class AlarmWindow;
class FrameMapping;
class OpenWindows;

/// What windows, frames, actions and alarms ask of the station they stand in. The window manager
/// is one; what stands below it knows it as this only. At most one at a time. GUI thread.
class WIDGETS_EXPORT DesktopContext
{
public:
    virtual ~DesktopContext();

    /// Null while there is no window manager.
    static DesktopContext *current();

    /// Of the process's model, see ProcessContext; null without one.
    static Nodes::systemAlarming *alarming();
    static Nodes::systemVisualization *visualization();
    /// False without a current one.
    static bool isStationEnding();

    /// The station ends: what is begun now is nobody's wish any more.
    virtual bool isEnding() const = 0;
    /// The frame on that 0-based screen, the one in front of several; null when there is none.
    virtual QWidget *getFrame(int screen) const = 0;
    /// How node coordinates are mapped to that screen.
    virtual FrameMapping mappingOn(int screen) const = 0;
    virtual OpenWindows &openWindows() = 0;
    virtual ActionDispatcher &dispatcher() = 0;
    /// Made when first asked for and kept; never null.
    virtual AlarmWindow *GetWindowAlarms() = 0;

protected:
    DesktopContext() = default;
    /// From now on this is the current one, until it is destroyed or another one comes.
    void enter();
    void leave();
};

} // namespace Widgets
