#pragma once

#include "widgets/WidgetsExport.h"

#include <QList>
#include <QPointer>

class QObject;
class QWidget;

namespace Nodes {
class BasicFrame;
class ConfigNode;
class NodesCollection;
} // namespace Nodes

namespace Widgets {

class FrameDisplays;
class OpenWindows;

/// Builds the station's frames with their windows and has them put on their displays. GUI thread.
class WIDGETS_EXPORT StationFrames
{
public:
    /// `windows` outlives it; the displays become a child of `parent`.
    StationFrames(OpenWindows &windows, QObject *parent);

    /// Builds every frame of this station and shows all in the project's order.
    void start(const Nodes::NodesCollection &project);
    /// The frame with its windows, not shown; null when the node is no frame. The caller owns it.
    QWidget *create(Nodes::ConfigNode *node);
    /// The one most recently built by `start`; null without one.
    QWidget *current() const { return m_current; }

    FrameDisplays &displays() const { return *m_displays; }
    /// Deletes the frames that `start` built.
    void destroyAll();

private:
    QList<QWidget *> openWindows(const Nodes::BasicFrame &node);

    OpenWindows &m_windows;
    FrameDisplays *m_displays;
    QPointer<QWidget> m_current;
};

} // namespace Widgets
