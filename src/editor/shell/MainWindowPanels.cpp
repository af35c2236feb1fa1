// The docks of the main window.
#include "editor/shell/MainWindow.h"

#include "editor/tables/PanelTable.h"

#include <QDockWidget>
#include <QMenu>

namespace Editor {

void MainWindow::makePanels()
{
    QMenu *panels = m_viewMenu->addMenu(tr("Панели"));
    for (const PanelRow &row : PanelTable()) {
        auto *dock = new QDockWidget(QString::fromUtf8(row.title), this);
        dock->setObjectName(QString::fromUtf8(row.key));
        dock->setWidget(row.make(m_workspace, dock));
        addDockWidget(row.area, dock);
        dock->setVisible(row.isShown);
        panels->addAction(dock->toggleViewAction());
    }
}

} // namespace Editor
