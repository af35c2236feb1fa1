#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/system/enWorkMode.h"

class QWidget;

namespace Nodes {
class systemAlarming;
class systemCore;
class systemVisualization;
} // namespace Nodes

namespace Widgets {

class FrameMapping;

/// What windows, frames, actions and alarms ask of the station they stand in. The window manager
/// is one; what stands below it knows it as this only. At most one at a time. GUI thread.
class WIDGETS_EXPORT DesktopContext
{
public:
    virtual ~DesktopContext();

    /// Null while there is no window manager.
    static DesktopContext *current();

    /// What the current one says; null, no mode and not ending without one.
    static Nodes::systemCore *core();
    static Nodes::enWorkMode workMode();
    static Nodes::systemAlarming *alarming();
    static Nodes::systemVisualization *visualization();
    static bool isStationEnding();

    /// May be null.
    virtual Nodes::systemCore *getCore() const = 0;
    /// The station ends: what is begun now is nobody's wish any more.
    virtual bool isEnding() const = 0;
    /// The frame on that 0-based screen, the one in front of several; null when there is none.
    virtual QWidget *getFrame(int screen) const = 0;
    /// How node coordinates are mapped to that screen.
    virtual FrameMapping mappingOn(int screen) const = 0;

protected:
    DesktopContext() = default;
    /// From now on this is the current one, until it is destroyed or another one comes.
    void enter();
    void leave();
};

} // namespace Widgets
