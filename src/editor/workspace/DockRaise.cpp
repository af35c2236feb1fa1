#include "editor/workspace/DockRaise.h"

#include <QDockWidget>

namespace Editor {

void raiseDock(QWidget &panel)
{
    for (QWidget *above = panel.parentWidget(); above; above = above->parentWidget()) {
        if (auto *dock = qobject_cast<QDockWidget *>(above)) {
            dock->show();
            dock->raise();
            return;
        }
    }
}

} // namespace Editor
