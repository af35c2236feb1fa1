#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"
#include "utils/undo/Interaction.h"

#include <QList>

namespace Utils {
class IUndo;
}

namespace Widgets {

class ProxyWidget;
class SceneSelection;

/// Edits of what is selected in a scene, each one step on the undo stack. GUI thread.
class WIDGETS_EXPORT SelectionEdits
{
public:
    /// Both outlive it.
    SelectionEdits(SceneSelection &selection, Utils::IUndo &undo)
        : m_selection(selection), m_undo(undo)
    {
    }

    /// Deletes those of the selected elements that are in the list.
    void remove(const Nodes::NodeLinks &links);
    /// Brings place and size of the items into the nodes. One entry of the undo stack for each
    /// interaction.
    void commitGeometry(const Utils::Interaction &interaction = {});
    /// Ends a move that is not committed and puts the items back; false without one.
    bool takeBackMove();
    /// With `push`, else at once and for good.
    void setMovable(ProxyWidget &host, bool &movable, bool &push);
    /// Moves all up, or down, by that many places.
    void moveOrder(int step);

private:
    SceneSelection &m_selection;
    Utils::IUndo &m_undo;
};

} // namespace Widgets
