#pragma once

#include "editor/project/ProjectSession.h"
#include "editor/recovery/ProjectCare.h"
#include "editor/workspace/Workspace.h"

#include <QMainWindow>

class QDockWidget;
class QLabel;
class QSessionManager;
class QMenu;
class QStackedWidget;

namespace Editor {

class CommandMenus;
class DocumentTabs;
class NoticeBar;
class PanelLayouts;
class PlantCheck;
class ProjectFiles;
struct PanelRow;
class StationRun;

/// The configurator's window: menus, documents in tabs, panels around them, and the line that tells
/// what happened. Made of the tables of panels, documents and commands. GUI thread.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// `station` is the program that "Запуск" starts, with those options besides the project.
    explicit MainWindow(const QString &station, const QStringList &stationOptions = {});
    ~MainWindow() override;

    ProjectFiles &files() { return *m_files; }
    Workspace &workspace() { return m_workspace; }
    CommandMenus &commands() { return *m_commands; }
    DocumentTabs &tabs() { return *m_tabs; }

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeFileMenu();
    void makeEditMenu();
    void makeViewMenu();
    void makeToolBar();
    void makePanels();
    void makeLetters();
    QDockWidget *makePanel(const PanelRow &row);
    /// Shows the panel and gives its first list the focus; the panel that has it gives it back.
    void goTo(QDockWidget &dock);
    void showProblems();
    void goToDocument();
    void showNotices();
    void fillRecent();
    void run();
    void startStation(const QStringList &away);
    void onSessionEnd(QSessionManager &manager);
    void showState();
    void showSave();
    void showTitle();

    QStringList m_stationOptions;
    ProjectSession m_session;
    Workspace m_workspace;
    ProjectCare m_care;
    ProjectFiles *m_files;
    StationRun *m_run;
    PlantCheck *m_plant;
    QStackedWidget *m_pages;
    DocumentTabs *m_tabs;
    NoticeBar *m_notice;
    CommandMenus *m_commands = nullptr;
    PanelLayouts *m_layouts = nullptr;
    QMenu *m_fileMenu = nullptr;
    QMenu *m_recentMenu = nullptr;
    QMenu *m_viewMenu = nullptr;
    QAction *m_runAction = nullptr;
    QAction *m_saveAction = nullptr;
    QAction *m_undoAction = nullptr;
    QAction *m_redoAction = nullptr;
    QList<QAction *> m_projectActions; // possible while a project is open
    QLabel *m_readOnly = nullptr;
};

} // namespace Editor
