#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QList>

class QGraphicsScene;

namespace Utils {
class IUndo;
}

namespace Widgets {

class ProxyWidget;

/// Edits of what is selected in a scene, each one step on the undo stack. GUI thread.
class SelectionEdits
{
public:
    SelectionEdits(QGraphicsScene &scene, Utils::IUndo &undo) : m_scene(scene), m_undo(undo) {}

    /// Selected hosts whose nodes exist.
    QList<ProxyWidget *> hosts() const;
    Nodes::NodeLinks links() const;

    /// Deletes those of the selected elements that are in the list.
    void remove(const Nodes::NodeLinks &links);
    /// Brings place and size of the items into the nodes.
    void commitGeometry();
    /// Ends a move that is not committed and puts the items back; false without one.
    bool takeBackMove();
    /// With `push`, else at once and for good.
    void setMovable(ProxyWidget &host, bool &movable, bool &push);
    /// Moves all up, or down, by that many places.
    void moveOrder(int step);

private:
    QGraphicsScene &m_scene;
    Utils::IUndo &m_undo;
};

} // namespace Widgets
