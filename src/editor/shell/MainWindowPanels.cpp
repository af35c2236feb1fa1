// The docks of the main window.
#include "editor/shell/MainWindow.h"

#include "editor/tables/PanelTable.h"

#include <QAction>
#include <QDockWidget>
#include <QHash>
#include <QMenu>

namespace Editor {

void MainWindow::makePanels()
{
    QMenu *panels = m_viewMenu->addMenu(tr("Панели"));
    QHash<int, QVector<QDockWidget *>> made; // by area
    for (const PanelRow &row : PanelTable()) {
        auto *dock = new QDockWidget(QString::fromUtf8(row.title), this);
        dock->setObjectName(QString::fromUtf8(row.key));
        dock->setWidget(row.make(m_workspace, dock));
        addDockWidget(row.area, dock);
        // One on top, the others in tabs below it: all fit on a small screen.
        QVector<QDockWidget *> &beside = made[row.area];
        const int first = row.area == Qt::LeftDockWidgetArea ? 1 : 0;
        if (beside.size() > first)
            tabifyDockWidget(beside.last(), dock);
        beside.append(dock);
        dock->setVisible(row.isShown);
        panels->addAction(dock->toggleViewAction());
        connect(dock->toggleViewAction(), &QAction::triggered, dock, [dock](bool isShown) {
            if (isShown)
                dock->raise(); // it may lie behind others of its area
        });
    }
    for (const QVector<QDockWidget *> &beside : qAsConst(made))
        beside[beside.size() > 1 && beside[1]->isVisibleTo(this) ? 1 : 0]->raise();
}

} // namespace Editor
