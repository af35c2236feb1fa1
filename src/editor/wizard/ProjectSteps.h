#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QRect>
#include <QString>
#include <QVector>

namespace Nodes {
class NodesCollection;
}

class QUndoCommand;

namespace Editor {

/// What a project needs before it shows a live value, and the commands that add it: each one step
/// of the history. The project outlives the object. GUI thread.
class ProjectSteps
{
public:
    explicit ProjectSteps(Nodes::NodesCollection &project) : m_project(project) {}

    bool hasSignals() const;
    /// Without one a station does not start.
    bool hasFrame() const;
    /// Some frame shows a window.
    bool hasWindow() const;
    /// Some element of a window shows a signal.
    bool hasReading() const;

    /// A driver that makes up three signals, so that there is something to show without a device.
    QUndoCommand *addSimulator() const;
    /// A driver for a Modbus TCP device with one group of registers and one signal.
    QUndoCommand *addModbus(const QString &name, const QString &host, int port) const;
    /// An empty window of that size, shown by the frame of that display (from 1), which is made
    /// when there is none; for display 0 one with a title bar, which opens when it is called.
    /// `made` becomes the window once the command is done.
    QUndoCommand *addWindow(const QString &name, const QSize &size, int display,
                            Nodes::NodeLink &made) const;
    /// A frame of that display (from 1) that shows the window.
    QUndoCommand *addFrame(const Nodes::NodeLink &window, int display) const;
    /// What the signals are called and their values, in one step: at free places within the
    /// screen, downwards and then to the right, in the topmost layer where it has layers. Called
    /// by their descriptions, else by their names, with the folder's where several have that one.
    QUndoCommand *addReadings(const Nodes::NodeLink &screen, const Nodes::NodeLinks &shown) const;

    /// All windows, or all signals, of the project in tree order.
    Nodes::NodeLinks windows() const;
    Nodes::NodeLinks signalNodes() const;

    /// The first station of the project, else its root.
    Nodes::ConfigNode *station() const;
    /// The folder of that name in the station, else the station.
    Nodes::NodeLink place(const char *folder) const;

private:
    void addFrame(const Nodes::NodeLink &window, int display, QUndoCommand *group) const;
    static Nodes::NodeLink elementsOf(const Nodes::NodeLink &screen);
    static QRect areaOf(const Nodes::NodeLink &screen);
    static QVector<QRect> placesOf(const Nodes::NodeLink &screen, const QRect &area);
    static QPoint freePlace(const QVector<QRect> &taken, const QRect &area, const QSize &size);
    static QString captionOf(const Nodes::NodeLink &signal, const Nodes::NodeLinks &others);

    Nodes::NodesCollection &m_project;
};

} // namespace Editor
