// The docks of the main window.
#include "editor/shell/MainWindow.h"

#include "editor/tables/PanelTable.h"
#include "editor/workspace/DocumentView.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QHash>
#include <QMenu>

#include <algorithm>

namespace Editor {

void MainWindow::makePanels()
{
    QMenu *panels =
        m_viewMenu->addMenu(QIcon(QStringLiteral(":/editor/icons/panels.svg")), tr("Панели"));
    QMenu *ways = m_viewMenu->addMenu(tr("Перейти к панели"));
    int number = 0;
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
        QAction *way = ways->addAction(dock->windowTitle());
        if (++number <= 9)
            way->setShortcut(QKeySequence(Qt::ALT + Qt::Key_0 + number));
        connect(way, &QAction::triggered, dock, [this, dock] { goTo(*dock); });
        connect(dock->toggleViewAction(), &QAction::triggered, dock, [dock](bool isShown) {
            if (isShown)
                dock->raise(); // it may lie behind others of its area
        });
    }
    ways->addSeparator();
    QAction *back = ways->addAction(tr("Документ"), this, &MainWindow::goToDocument);
    back->setShortcut(QKeySequence(Qt::ALT + Qt::Key_0));
    for (const QVector<QDockWidget *> &beside : qAsConst(made))
        beside[beside.size() > 1 && beside[1]->isVisibleTo(this) ? 1 : 0]->raise();
}

// From wherever one works, and back by the same keys.
void MainWindow::goTo(QDockWidget &dock)
{
    const QWidget *focused = QApplication::focusWidget();
    if (focused && dock.isAncestorOf(focused)) {
        goToDocument();
        return;
    }
    dock.show();
    dock.raise();
    QWidget *first = dock.widget();
    const QList<QAbstractItemView *> views = first->findChildren<QAbstractItemView *>();
    const auto seen = std::find_if(views.begin(), views.end(), [](const QAbstractItemView *view) {
        return view->isVisible() && view->isEnabled();
    });
    if (seen != views.end())
        first = *seen;
    else if (first->focusPolicy() == Qt::NoFocus && first->nextInFocusChain())
        first = first->nextInFocusChain();
    first->setFocus(Qt::ShortcutFocusReason);
}

void MainWindow::goToDocument()
{
    if (DocumentView *document = m_workspace.document())
        document->setFocus(Qt::ShortcutFocusReason);
}

} // namespace Editor
