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

class SceneGroups;
class SceneSelection;
struct SceneEditRow;

/// The edits of SceneEditTable on what is selected in a scene, each a step on the undo stack. GUI
/// thread.
class WIDGETS_EXPORT TableEdits : public QObject
{
    Q_OBJECT

public:
    /// All but `node`, which may be null, outlive it. `node` is what the scene stands for.
    TableEdits(SceneSelection &selection, const SceneGroups &groups, Utils::IUndo &undo,
               Nodes::BasicNode *node);

    EditedElements edited() const;
    /// Nothing happens when too little is selected or nothing would change.
    void run(const SceneEditRow &row);
    /// Appends all edits of the table, in submenus by their group, and the layers to move to.
    void fillMenu(QMenu &menu);

private:
    void fillLayers(QMenu &menu);
    void push(QUndoCommand *command);

    SceneSelection &m_selection;
    const SceneGroups &m_groups;
    Utils::IUndo &m_undo;
    Utils::WatchedNode<Nodes::BasicNode> m_node;
};

} // namespace Widgets
