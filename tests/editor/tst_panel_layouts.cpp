#include "editor/shell/MainWindow.h"
#include "editor/shell/ProjectFiles.h"
#include "support/Rows.h"

#include "utils/settings/Configurator.h"

#include <QAction>
#include <QDockWidget>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using Editor::MainWindow;

namespace {

/// Two projects on disk, and a window that is closed and opened as a user does.
struct Desk
{
    Desk()
    {
        for (const char *name : {"a", "b", "c"}) {
            Editor::ProjectSession session;
            if (!session.create(directory.filePath(name), name))
                qFatal("no project");
        }
        start();
    }
    void start()
    {
        if (window)
            window->close();
        window.reset();
        window = std::make_unique<MainWindow>(QString());
        window->show();
    }
    QDockWidget *dock(const char *name) const { return window->findChild<QDockWidget *>(name); }
    /// "a" opens that project, "+x" and "-x" show and hide a panel, "." closes the project, "!"
    /// starts the program anew, "0" is the layout by default.
    void press(const QString &what)
    {
        if (what == "!")
            start();
        else if (what == ".")
            window->workspace().session().close();
        else if (what == "0")
            window->findChild<QAction *>("panels.default")->trigger();
        else if (what[0] == '+' || what[0] == '-')
            dock(qPrintable(what.mid(1)))->setVisible(what[0] == '+');
        else if (!window->files().open(directory.filePath(what)))
            qFatal("not opened");
    }
    QString shown() const
    {
        QStringList names;
        for (const char *name : {"tree", "usages", "problems"}) {
            if (!dock(name)->isHidden())
                names << name;
        }
        return names.join(' ');
    }

    QTemporaryDir directory;
    std::unique_ptr<MainWindow> window;
};

} // namespace

class PanelLayoutsTest : public QObject
{
    Q_OBJECT

private slots:
    void belongToProjects_data()
    {
        const Rows<QString, QString> row("done", "shown");
        row("at first", "a", "tree");
        row("each its own", "a +usages b -usages +problems a", "tree usages");
        row("and back", "a +usages b -usages +problems a b", "tree problems");
        row("through a new start", "a +usages b -usages ! a", "tree usages");
        row("closed by the program's end", "a -tree ! a", "");
        row("a project seen for the first time has what was used last", "a +problems . c",
            "tree problems");
        row("a new start without a project, too", "a +problems !", "tree problems");
        row("by default", "a +problems -tree 0", "tree");
        row("others keep theirs", "a +problems b 0 a", "tree problems");
    }

    void belongToProjects()
    {
        QFETCH(QString, done);
        QFile::remove(Utils::Configurator("x", "configurator.json").settingsPath());
        Desk desk;
        for (const QString &what : done.split(' '))
            desk.press(what);
        QTEST(desk.shown(), "shown");
    }
};

QTEST_MAIN(PanelLayoutsTest)
#include "tst_panel_layouts.moc"
