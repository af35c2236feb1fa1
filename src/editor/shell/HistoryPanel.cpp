#include "editor/shell/HistoryPanel.h"

#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

namespace Editor {

HistoryPanel::HistoryPanel(Workspace &workspace, QWidget *parent)
    : QUndoView(&workspace.session().undoStack(), parent)
{
    setAccessibleName(tr("История изменений"));
    setEmptyLabel(tr("Как открыто"));
    setAlternatingRowColors(true);
}

} // namespace Editor
