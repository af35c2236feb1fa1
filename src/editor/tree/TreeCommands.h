#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QKeySequence>
#include <QVector>

namespace Editor {

class ProjectTreePanel;

/// One thing to do with the nodes selected in the project tree: in its context menu and by its
/// keys while the tree has the focus. Without a text: a separator.
struct TreeCommand
{
    const char *id;
    const char *text; ///< Russian
    const char *icon; ///< resource
    const char *keys; ///< portable form of QKeySequence; "" for none
    bool isEdit;      ///< not for projects that are open for reading only
    /// Whether there is something to do for these; null: always, also when nothing is selected.
    bool (*isPossible)(const Nodes::NodeLinks &nodes);
    void (ProjectTreePanel::*run)();
};

const QVector<TreeCommand> &TreeCommands();

} // namespace Editor
