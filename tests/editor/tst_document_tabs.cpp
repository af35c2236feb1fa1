#include "editor/shell/CommandMenus.h"
#include "editor/shell/DocumentTabs.h"
#include "editor/shell/MainWindow.h"
#include "editor/wizard/ProjectSteps.h"
#include "editor/workspace/DocumentView.h"
#include "support/Rows.h"

#include "nodes/model/ConfigNode.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/IUndo.h"
#include "widgets/scene/ProxyScene.h"

#include <QAction>
#include <QMenu>
#include <QTabBar>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

namespace {

/// A project with the windows A, B, C, D, each in its tab.
struct Tabs
{
    Tabs()
    {
        Editor::ProjectSession &session = window.workspace().session();
        if (!session.create(directory.filePath("p"), "P"))
            qFatal("no project");
        for (const char *name : {"A", "B", "C", "D"}) {
            Nodes::NodeLink made;
            Editor::ProjectSteps steps(*session.project());
            (void)Utils::IUndo::execute(steps.addWindow(name, {640, 480}, 1, made));
            window.workspace().open(made);
        }
    }
    Editor::DocumentTabs &tabs() { return window.tabs(); }
    void go(QChar name)
    {
        for (int i = 0; i < tabs().count(); ++i) {
            if (tabs().tabText(i) == name)
                tabs().setCurrentIndex(i);
        }
    }
    /// "-" closes, "=" closes the others, "+" opens again, ">" and "<" step, "~" takes the last
    /// edit back; a letter goes to that tab.
    void press(QChar what)
    {
        static const QHash<QChar, QString> ids = {{'-', "tabs.close"},
                                                  {'=', "tabs.closeOthers"},
                                                  {'+', "tabs.reopen"},
                                                  {'>', "tabs.next"},
                                                  {'<', "tabs.previous"}};
        QCoreApplication::processEvents(); // the menus ask what is possible
        if (ids.contains(what))
            window.commands().action(ids[what])->trigger();
        else if (what == '~')
            window.workspace().session().undoStack().undo();
        else
            go(what);
    }
    QString open()
    {
        QString names;
        for (int i = 0; i < tabs().count(); ++i)
            names += i == tabs().currentIndex() ? '[' + tabs().tabText(i) + ']' : tabs().tabText(i);
        return names;
    }

    QTemporaryDir directory;
    Editor::MainWindow window{QString()};
};

} // namespace

class DocumentTabsTest : public QObject
{
    Q_OBJECT

private slots:
    void isWorkedByCommands_data()
    {
        const Rows<QString, QString, QString> row("keys", "open", "latest");
        row("as opened", "", "ABC[D]", "CBA");
        row("closed ones are remembered", "B-", "A[C]D", "BDA");
        row("opened again, the last first", "B-C-+", "AD[C]", "DBA");
        row("all again", "B-C-++", "ADC[B]", "CDA");
        row("nothing to open again", "+", "ABC[D]", "CBA");
        row("all but one", "B=", "[B]", "DCA");
        row("round and round", "><", "ABC[D]", "ACB");
        row("the first after the last", ">", "[A]BCD", "DCB");
        row("its node is gone", "D-~+", "AB[C]", "BA");
    }

    void isWorkedByCommands()
    {
        QFETCH(QString, keys);
        Tabs f;
        for (const QChar key : keys)
            f.press(key);
        QTEST(f.open(), "open");
        QString latest;
        for (const Nodes::NodeLink &node : f.tabs().latest())
            latest += QString::fromStdString(node->GetName());
        QTEST(latest, "latest");
    }

    void theMiddleButtonCloses()
    {
        Tabs f;
        QTabBar &bar = *f.tabs().tabBar();
        QTest::mouseClick(&bar, Qt::MiddleButton, {}, bar.tabRect(1).center());
        QCOMPARE(f.open(), QString("AC[D]"));
        QTest::mouseClick(&bar, Qt::MiddleButton, {},
                          bar.tabRect(2).center() + QPoint(bar.tabRect(2).width(), 0));
        QCOMPARE(f.open(), QString("AC[D]"));
    }

    void listsAllTabs()
    {
        Tabs f;
        QMenu *menu = f.tabs().findChild<QToolButton *>("tabList")->menu();
        emit menu->aboutToShow();
        QCOMPARE(menu->actions().size(), 4);
        QVERIFY(menu->actions()[3]->isChecked());
        menu->actions()[1]->trigger();
        QCOMPARE(f.open(), QString("A[B]CD"));
    }

    void keepsBothEndsOfALongName()
    {
        Tabs f;
        QVERIFY(Utils::IUndo::execute(
            new Utils::ChangeTextCommand(f.tabs().at(0)->node(), Utils::ChangeTextCommand::Name,
                                         "Котёл 1 с очень длинным названием на две строки")));
        QTRY_VERIFY(f.tabs().tabText(0).contains("…"));
        QVERIFY(f.tabs().tabText(0).startsWith("Котёл 1 с очень"));
        QVERIFY(f.tabs().tabText(0).endsWith("на две строки"));
    }

    // What is selected in a window is not edited from another one.
    void theSelectionStaysInItsWindow()
    {
        Tabs f;
        Editor::Workspace &workspace = f.window.workspace();
        f.go('A');
        const Nodes::NodeLinks a{workspace.document()->node()};
        QCOMPARE(workspace.selection().nodes(), a);
        const Nodes::NodeLinks root{Nodes::NodeLink(workspace.session().root())};
        workspace.selection().select(root, workspace.document()->scene()); // as if an element
        f.go('B');
        const Nodes::NodeLinks b{workspace.document()->node()};
        QCOMPARE(workspace.selection().nodes(), b);
        workspace.selection().select(root, &f.window); // in the tree
        f.go('A');
        QCOMPARE(workspace.selection().nodes(), root);
    }

    void theNextProjectBeginsAnew()
    {
        Tabs f;
        f.press('-');
        f.window.workspace().session().close();
        QVERIFY(!f.tabs().canReopen());
        QVERIFY(f.tabs().latest().empty());
    }
};

QTEST_MAIN(DocumentTabsTest)
#include "tst_document_tabs.moc"
