// The docks of the main window.
#include "editor/shell/MainWindow.h"

#include "editor/shell/PanelLayouts.h"
#include "editor/tables/PanelTable.h"
#include "editor/workspace/DocumentView.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QHash>
#include <QKeyEvent>
#include <QMenu>

#include <algorithm>
#include <iterator>

namespace Editor {

namespace {

/// Alt with 1 to 9, then with the keys beside them; 0 leads to the document.
QKeySequence keysOf(int number)
{
    const int keys[] = {Qt::Key_1, Qt::Key_2, Qt::Key_3, Qt::Key_4,     Qt::Key_5,    Qt::Key_6,
                        Qt::Key_7, Qt::Key_8, Qt::Key_9, Qt::Key_Minus, Qt::Key_Equal};
    return number < int(std::size(keys)) ? QKeySequence(Qt::ALT + keys[number]) : QKeySequence();
}

} // namespace

QDockWidget *MainWindow::makePanel(const PanelRow &row)
{
    auto *dock = new QDockWidget(QString::fromUtf8(row.title), this);
    dock->setObjectName(QString::fromUtf8(row.key));
    dock->setWidget(row.make(m_workspace, dock));
    dock->installEventFilter(this);
    addDockWidget(row.area, dock);
    connect(dock->toggleViewAction(), &QAction::triggered, dock, [dock](bool isShown) {
        if (isShown)
            dock->raise(); // it may lie behind others of its area
    });
    return dock;
}

void MainWindow::makePanels()
{
    const auto icon = [](const char *name) {
        return QIcon(QStringLiteral(":/editor/icons/%1.svg").arg(QLatin1String(name)));
    };
    QMenu *panels = m_viewMenu->addMenu(icon("panels"), tr("Панели"));
    QMenu *ways = m_viewMenu->addMenu(icon("goToPanel"), tr("Перейти к панели"));
    int number = 0;
    QHash<int, QVector<QDockWidget *>> made; // by area
    for (const PanelRow &row : PanelTable()) {
        QDockWidget *dock = makePanel(row);
        // One on top, the others in tabs below it: all fit on a small screen.
        QVector<QDockWidget *> &beside = made[row.area];
        const int first = row.area == Qt::LeftDockWidgetArea ? 1 : 0;
        if (beside.size() > first)
            tabifyDockWidget(beside.last(), dock);
        beside.append(dock);
        dock->setVisible(row.isShown);
        panels->addAction(dock->toggleViewAction());
        QAction *way = ways->addAction(dock->windowTitle());
        way->setShortcut(keysOf(number++));
        connect(way, &QAction::triggered, dock, [this, dock] { goTo(*dock); });
    }
    panels->addSeparator();
    QAction *usual =
        panels->addAction(icon("defaultPanels"), tr("Расположение панелей по умолчанию"), this,
                          [this] { m_layouts->reset(); });
    usual->setObjectName(QStringLiteral("panels.default"));
    ways->addSeparator();
    QAction *back = ways->addAction(tr("Документ"), this, &MainWindow::goToDocument);
    back->setShortcut(QKeySequence(Qt::ALT + Qt::Key_0));
    // After the layout of the project is there.
    connect(&m_session, &ProjectSession::opened, this, &MainWindow::showProblems,
            Qt::QueuedConnection);
    for (const QVector<QDockWidget *> &beside : qAsConst(made))
        beside[beside.size() > 1 && beside[1]->isVisibleTo(this) ? 1 : 0]->raise();
}

// Whoever opens a project that could not be read whole has to know what is missing.
void MainWindow::showProblems()
{
    auto *dock = findChild<QDockWidget *>(QStringLiteral("problems"));
    if (!dock || m_session.report().empty())
        return;
    dock->show();
    dock->raise();
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
    if (QWidget *proxy = first->focusProxy()) { // it knows where one begins
        proxy->setFocus(Qt::ShortcutFocusReason);
        return;
    }
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

void MainWindow::showNotices()
{
    if (auto *dock = findChild<QDockWidget *>(QStringLiteral("notices"))) {
        dock->show();
        dock->raise();
    }
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && qobject_cast<QDockWidget *>(watched) &&
        static_cast<const QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        goToDocument();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

} // namespace Editor
