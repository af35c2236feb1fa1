#include "editor/shell/MainWindow.h"

#include "editor/recovery/AutoSave.h"
#include "editor/resources/Resources.h"
#include "editor/shell/CommandMenus.h"
#include "editor/shell/DiskWait.h"
#include "editor/shell/DocumentTabs.h"
#include "editor/shell/MenuLetters.h"
#include "editor/shell/NoticeBar.h"
#include "editor/shell/OpenEdit.h"
#include "editor/shell/PanelLayouts.h"
#include "editor/shell/PlantCheck.h"
#include "editor/shell/ProjectFiles.h"
#include "editor/shell/RecentProjects.h"
#include "editor/shell/StartPage.h"
#include "editor/shell/StationRun.h"

#include "editor/wizard/FirstSteps.h"
#include "editor/wizard/StepCommands.h"
#include "editor/workspace/DocumentView.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QLabel>
#include <QMenuBar>
#include <QScrollArea>
#include <QSessionManager>
#include <QStackedWidget>
#include <QToolBar>
#include <QVBoxLayout>

namespace Editor {

namespace {

enum Page { StartingPage, DocumentsPage, StepsPage };

// A page that is not shown counts for the least width of the window all the same.
QScrollArea *scrolled(QWidget *page)
{
    auto *area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setWidget(page);
    return area;
}

} // namespace

MainWindow::MainWindow(const QString &station, const QStringList &stationOptions)
    : m_stationOptions(stationOptions),
      m_workspace(m_session, *this),
      m_care(m_workspace, nullptr),
      m_files(new ProjectFiles(m_workspace, this)),
      m_run(new StationRun(m_workspace, station, this)),
      m_plant(new PlantCheck(this)),
      m_pages(new QStackedWidget(this)),
      m_tabs(new DocumentTabs(m_workspace, this)),
      m_notice(new NoticeBar(this))
{
    InitResources();
    setObjectName(QStringLiteral("configurator"));
    setDockOptions(AnimatedDocks | AllowTabbedDocks | AllowNestedDocks);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    auto *centre = new QWidget(this);
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_pages, 1);
    column->addWidget(m_notice); // below: what is pressed must not move as it comes and goes
    m_pages->addWidget(scrolled(new StartPage(*m_files, m_care.autoSave().directory(), this)));
    m_pages->addWidget(m_tabs);
    auto *steps = new FirstSteps(m_workspace, this);
    m_pages->addWidget(steps);
    connect(steps, &FirstSteps::runRequested, this, &MainWindow::run);
    setCentralWidget(centre);

    makeFileMenu();
    makeEditMenu();
    makeViewMenu();
    m_commands = new CommandMenus(m_workspace, *menuBar());
    makeToolBar();
    makePanels();
    m_layouts = new PanelLayouts(*this, m_session);
    makeLetters();

    m_session.setDiskRunner(
        [wait = new DiskWait(*this, this)](const DiskJob &job) { return wait->run(job); });
    connect(&m_workspace, &Workspace::told, m_notice, &NoticeBar::tell);
    connect(m_notice, &NoticeBar::logRequested, this, &MainWindow::showNotices);
    connect(&m_session, &ProjectSession::closed, m_notice, &NoticeBar::clear);
    connect(&m_workspace, &Workspace::commandsChanged, this, &MainWindow::showState);
    connect(&m_session, &ProjectSession::aboutToClose, m_plant, &PlantCheck::cancel);
    connect(m_plant, &PlantCheck::finished, this, &MainWindow::startStation);
    connect(m_run, &StationRun::runningChanged, this, &MainWindow::showState);
    connect(qApp, &QApplication::focusChanged, this, &MainWindow::showSave);
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &MainWindow::onSessionEnd,
            Qt::DirectConnection);
    if (!m_layouts->restoreWindow())
        setWindowState(Qt::WindowMaximized);
    showState();
}

MainWindow::~MainWindow()
{
    disconnect(qApp, nullptr, this, nullptr); // the focus moves on while the parts go
    m_session.close();
    // Documents and panels speak with the workspace, which goes before the base class's children.
    delete takeCentralWidget();
    const auto docks = findChildren<QDockWidget *>();
    qDeleteAll(docks);
}

void MainWindow::makeFileMenu()
{
    m_fileMenu = menuBar()->addMenu(tr("&Файл"));
    const auto icon = [](const char *name) {
        return QIcon(QStringLiteral(":/editor/icons/%1.svg").arg(QLatin1String(name)));
    };
    QAction *made = m_fileMenu->addAction(icon("new"), tr("Новый проект…"), m_files,
                                          &ProjectFiles::createByDialog, QKeySequence::New);
    made->setObjectName(QStringLiteral("file.new"));
    m_fileMenu->addAction(icon("open"), tr("Открыть проект…"), m_files, &ProjectFiles::openByDialog,
                          QKeySequence::Open);
    m_recentMenu = m_fileMenu->addMenu(icon("recent"), tr("Последние проекты"));
    m_recentMenu->setObjectName(QStringLiteral("file.recent"));
    connect(m_recentMenu, &QMenu::aboutToShow, this, &MainWindow::fillRecent);
    m_fileMenu->addSeparator();
    m_saveAction = m_fileMenu->addAction(icon("save"), tr("Сохранить"), m_files,
                                         &ProjectFiles::save, QKeySequence::Save);
    m_projectActions << m_fileMenu->addAction(icon("saveAs"), tr("Сохранить в другой каталог…"),
                                              m_files, &ProjectFiles::saveAsByDialog,
                                              QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    m_projectActions << m_fileMenu->addAction(icon("closeProject"), tr("Закрыть проект"), m_files,
                                              &ProjectFiles::close);
    m_fileMenu->addSeparator();
    m_runAction = m_fileMenu->addAction(icon("run"), tr("Запуск"), this, &MainWindow::run,
                                        QKeySequence(Qt::Key_F5));
    m_runAction->setObjectName(QStringLiteral("file.run"));
    m_projectActions << m_runAction;
    m_fileMenu->addSeparator();
    m_fileMenu->addAction(icon("quit"), tr("Выход"), this, &QWidget::close, QKeySequence::Quit);
}

void MainWindow::makeEditMenu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Правка"));
    m_undoAction = m_session.undoStack().createUndoAction(this, tr("Отменить"));
    m_undoAction->setIcon(QIcon(QStringLiteral(":/editor/icons/undo.svg")));
    m_undoAction->setShortcuts(QKeySequence::Undo);
    m_redoAction = m_session.undoStack().createRedoAction(this, tr("Повторить"));
    m_redoAction->setIcon(QIcon(QStringLiteral(":/editor/icons/redo.svg")));
    m_redoAction->setShortcuts({Qt::CTRL | Qt::SHIFT | Qt::Key_Z, Qt::CTRL | Qt::Key_Y});
    menu->addAction(m_undoAction);
    menu->addAction(m_redoAction);
    menu->addSeparator();
}

void MainWindow::makeViewMenu()
{
    m_viewMenu = menuBar()->addMenu(tr("&Вид"));
    menuBar()->addMenu(tr("&Размещение"));
    menuBar()->addMenu(tr("Прое&кт"));
    menuBar()->addMenu(tr("Спр&авка"));
}

void MainWindow::makeLetters()
{
    const auto menus = menuBar()->findChildren<QMenu *>();
    for (QMenu *menu : menus) {
        if (menu != m_recentMenu) // numbered
            MenuLetters::keep(*menu);
    }
}

void MainWindow::makeToolBar()
{
    QToolBar *bar = addToolBar(tr("Панель инструментов"));
    bar->setObjectName(QStringLiteral("tools"));
    bar->setMovable(false);
    bar->addAction(m_saveAction);
    bar->addSeparator();
    bar->addAction(m_undoAction);
    bar->addAction(m_redoAction);
    bar->addSeparator();
    bar->addAction(m_runAction);
    auto *gap = new QWidget(bar);
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(gap);
    m_readOnly = new QLabel(bar);
    m_readOnly->setTextFormat(Qt::PlainText);
    bar->addWidget(m_readOnly);
    // The names of steps belong to the menu: a bar that changes its width with them is no bar.
    for (QAction *action : {m_undoAction, m_redoAction})
        action->setIconText(QString());
}

void MainWindow::fillRecent()
{
    m_recentMenu->clear();
    const QStringList directories = RecentProjects::all();
    int number = 0;
    for (QString name : directories) {
        const QString directory = name;
        name = QDir::toNativeSeparators(name).replace(QLatin1Char('&'), QStringLiteral("&&"));
        m_recentMenu->addAction(QStringLiteral("&%1  %2").arg(++number % 10).arg(name), m_files,
                                [this, directory] { m_files->open(directory); });
    }
    if (directories.isEmpty())
        m_recentMenu->addAction(tr("Пока нет"))->setEnabled(false);
}

void MainWindow::run()
{
    if (m_run->isRunning()) {
        m_run->stop();
        return;
    }
    if (m_plant->isRunning())
        return;
    if (!StepCommands::hasFrame(m_workspace))
        return;
    OpenEdit::take();
    if (m_session.isModified() && !m_session.isReadOnly() && !m_files->save())
        return;
    m_workspace.tell(Workspace::Info, tr("Проверяю связь с оборудованием…"));
    m_plant->start(m_session);
}

void MainWindow::startStation(const QStringList &away)
{
    if (!m_session.isOpen() || m_run->isRunning())
        return;
    QStringList options = m_stationOptions;
    if (away.isEmpty()) {
        m_workspace.tell(Workspace::Info, tr("Станция оператора запускается."));
    } else {
        options << QStringLiteral("--simulate");
        m_workspace.tell(Workspace::Warning,
                         tr("Оборудование не отвечает: %1. Станция запускается с имитатором, "
                            "команды до оборудования не дойдут.")
                             .arg(away.join(QStringLiteral("; "))));
    }
    m_run->start(options);
}

void MainWindow::showState()
{
    const bool isOpen = m_session.isOpen();
    m_pages->setCurrentIndex(!isOpen               ? StartingPage
                             : m_tabs->count() > 0 ? DocumentsPage
                                                   : StepsPage);
    for (QAction *action : qAsConst(m_projectActions))
        action->setEnabled(isOpen);
    showSave();
    m_runAction->setText(m_run->isRunning() ? tr("Остановить станцию") : tr("Запуск"));
    m_readOnly->setText(m_session.isReadOnly()
                            ? tr("Только чтение: %1").arg(m_session.readOnlyReason())
                            : QString());
    showTitle();
}

void MainWindow::showSave()
{
    m_saveAction->setEnabled(
        m_session.isOpen() &&
        (m_session.isModified() || m_session.isReadOnly() || OpenEdit::isPossible()));
}

void MainWindow::showTitle()
{
    setWindowModified(m_session.isModified());
    setWindowTitle(m_session.isOpen()
                       ? tr("%1[*]%2 — Конфигуратор")
                             .arg(m_session.name(),
                                  m_session.isReadOnly() ? tr(" (только чтение)") : QString())
                       : tr("Конфигуратор"));
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!m_files->mayLeave()) {
        event->ignore();
        return;
    }
    m_layouts->keepWindow();
    event->accept();
}

// Whoever logs out may be asked or not; if not, nothing is lost all the same.
void MainWindow::onSessionEnd(QSessionManager &manager)
{
    OpenEdit::take();
    m_care.autoSave().keepAtOnce();
    if (!m_session.isModified() || !manager.allowsInteraction())
        return;
    const bool isLeaving = m_files->mayLeave();
    manager.release();
    if (!isLeaving)
        manager.cancel();
}

} // namespace Editor
