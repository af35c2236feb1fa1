#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/arrange/EditedElements.h"

#include "utils/relay/WatchedNode.h"

#include <QObject>

class QMenu;
class QUndoCommand;

namespace Nodes {
class BasicNode;
}

namespace Utils {
class IUndo;
}

namespace Widgets {

class SceneSelection;
struct SceneEditRow;

/// The edits of SceneEditTable on what is selected in a scene, each a step on the undo stack. GUI
/// thread.
class WIDGETS_EXPORT TableEdits : public QObject
{
    Q_OBJECT

public:
    /// Both outlive it. `node`, which may be null, is what the scene stands for.
    TableEdits(SceneSelection &selection, Utils::IUndo &undo, Nodes::BasicNode *node);

    EditedElements edited() const;
    /// Nothing happens when too little is selected or nothing would change.
    void run(const SceneEditRow &row);
    /// Appends all edits of the table, in submenus by their group, and the layers to move to.
    void fillMenu(QMenu &menu);

private:
    void fillLayers(QMenu &menu);
    void push(QUndoCommand *command);

    SceneSelection &m_selection;
    Utils::IUndo &m_undo;
    Utils::WatchedNode<Nodes::BasicNode> m_node;
};

} // namespace Widgets
