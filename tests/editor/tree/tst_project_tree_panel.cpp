#include "editor/tree/ProjectTreePanel.h"

#include "editor/OpenProject.h"
#include "editor/tree/ProjectTreeModel.h"
#include "editor/tree/TreeCommands.h"
#include "editor/tree/TreeFilterView.h"
#include "editor/usages/UsagesModel.h"
#include "editor/usages/UsagesPanel.h"
#include "support/Rows.h"
#include "utils/undo/MoveNodesCommand.h"

#include <QAction>
#include <QClipboard>
#include <QLineEdit>
#include <QMainWindow>
#include <QSignalSpy>
#include <QTreeView>

using namespace Editor;
using namespace Nodes;

namespace {

/// The panel on the screen, with the focus in its tree.
struct ShownPanel : OpenProject
{
    ShownPanel()
    {
        panel.resize(500, 600);
        panel.show();
        (void)QTest::qWaitForWindowActive(&panel);
        panel.tree().view().setFocus();
    }
    QTreeView &view() { return panel.tree().view(); }
    void select(std::initializer_list<const char *> paths)
    {
        panel.tree().select(links(paths), true);
    }
    void press(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&view(), Qt::Key(key), modifiers);
    }
    bool isExpanded(const char *path)
    {
        return view().isExpanded(panel.model().indexOf(NodeLink(at(path))));
    }
    QStringList selected()
    {
        QStringList paths;
        for (const NodeLink &node : panel.tree().selected())
            paths << QString::fromStdString(node.GetLinkName(true));
        return paths;
    }

    ProjectTreePanel panel{workspace, nullptr};
};

} // namespace

class TestProjectTreePanel : public QObject
{
    Q_OBJECT

private slots:
    void obeysKeys_data();
    void obeysKeys();
    void movesWhatWasCut();
    void copiesThroughTheClipboard();
    void keepsItsKeysFromMenus();
    void renamesInPlace();
    void sharesTheSelection();
    void whatMovesStaysSelected();
    void revealsWhatTheFilterHides();
    void searchesOnWhereNothingWasFound();
    void copiesPaths();
    void keepsWhatIsExpanded();
    void opensDocumentsAndFolders();
    void listsUsages();
    void letsTheProjectGo();
};

void TestProjectTreePanel::obeysKeys_data()
{
    const Rows<int, int, QStringList> add("key", "modifiers", "first");
    add("duplicate", Qt::Key_D, Qt::ControlModifier, {".К1", "..T", "..P", "..P 2", "..Q"});
    add("delete", Qt::Key_Delete, Qt::NoModifier, {".К1", "..T", "..Q"});
    add("up", Qt::Key_Up, Qt::AltModifier, {".К1", "..P", "..T", "..Q"});
    add("down", Qt::Key_Down, Qt::AltModifier, {".К1", "..T", "..Q", "..P"});
}

void TestProjectTreePanel::obeysKeys()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QStringList, first);
    ShownPanel p;
    p.select({"К1/P"});
    p.press(key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(p.names().mid(1, first.size()), first);
    QCOMPARE(p.session.undoStack().count(), 1);
    const std::string after = p.text();
    p.session.setReadOnly("занят");
    p.press(key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(p.text(), after);
}

void TestProjectTreePanel::movesWhatWasCut()
{
    ShownPanel p;
    p.select({"К1/Q"});
    p.press(Qt::Key_X, Qt::ControlModifier);
    QVERIFY(p.at("К1/Q")); // nothing is lost until it is pasted
    QVERIFY(p.panel.model().indexOf(NodeLink(p.at("К1/Q"))).data(Qt::ForegroundRole).isValid());
    p.select({"К2"});
    p.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(p.signalOf("Композиция/Слой/c"), std::string("К2/Q"));
    QCOMPARE(p.selected(), QStringList{"К2/Q"});
    // Pasted again it is a copy.
    p.select({"К1"});
    p.press(Qt::Key_V, Qt::ControlModifier);
    QVERIFY(p.at("К1/Q") && p.at("К2/Q"));
    QCOMPARE(p.signalOf("Композиция/Слой/c"), std::string("К2/Q"));
    p.press(Qt::Key_X, Qt::ControlModifier);
    p.press(Qt::Key_Escape);
    QVERIFY(!p.panel.model().indexOf(NodeLink(p.at("К1/Q"))).data(Qt::ForegroundRole).isValid());
}

void TestProjectTreePanel::copiesThroughTheClipboard()
{
    ShownPanel p;
    p.select({"К1/T", "К1/P"});
    p.press(Qt::Key_C, Qt::ControlModifier);
    p.select({"К2/T"}); // takes none itself: they come beside it
    p.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(p.names().mid(5, 5), QStringList({".К2", "..T", "..T 2", "..P 2", "..P"}));
    QCOMPARE(p.selected(), QStringList({"К2/T 2", "К2/P 2"}));
    p.select({"Композиция/Слой"});
    p.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(p.layer->GetNodeCount(), 3);
    QCOMPARE(p.told.size(), 1);
}

void TestProjectTreePanel::keepsItsKeysFromMenus()
{
    ShownPanel p;
    QAction menus(&p.panel);
    menus.setShortcut(QKeySequence::Delete);
    p.panel.addAction(&menus);
    const QSignalSpy triggered(&menus, &QAction::triggered);
    p.select({"К1/P"});
    p.press(Qt::Key_Delete);
    QVERIFY(!p.at("К1/P"));
    QCOMPARE(triggered.count(), 0);
    p.panel.tree().startSearch();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    QVERIFY(p.at("К1/T"));
}

void TestProjectTreePanel::renamesInPlace()
{
    ShownPanel p;
    p.select({"К1/P"});
    p.press(Qt::Key_F2);
    auto *line = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    QVERIFY(line);
    line->setText("Давление");
    QTest::keyClick(line, Qt::Key_Return);
    QTRY_VERIFY(p.at("К1/Давление")); // the view takes it over a moment later
    QCOMPARE(p.selected(), QStringList{"К1/Давление"});
}

void TestProjectTreePanel::sharesTheSelection()
{
    ShownPanel p;
    QObject scene;
    const QSignalSpy told(&p.workspace.selection(), &Selection::changed);
    p.select({"К1/P", "К1/T"});
    QCOMPARE(p.workspace.selection().nodes(), p.links({"К1/P", "К1/T"})); // the key one first
    p.workspace.selection().select(p.links({"Композиция/Слой/b", "Композиция/Слой/a"}), &scene);
    QCOMPARE(p.selected(), QStringList({"Композиция/Слой/b", "Композиция/Слой/a"}));
    QVERIFY(p.isExpanded("Композиция/Слой"));
    // Nobody answers: the scene would lose the order of its selection.
    QCOMPARE(qvariant_cast<QObject *>(told.last()[1]), &scene);
    (void)p.layer->RemoveNode(p.at("Композиция/Слой/b"));
    QCOMPARE(p.selected(), QStringList{"Композиция/Слой/a"});
}

void TestProjectTreePanel::whatMovesStaysSelected()
{
    ShownPanel p;
    QObject scene;
    const NodeLinks chosen = p.links({"К1/Q", "Композиция/Слой/a"});
    p.workspace.selection().select(chosen, &scene);
    const QSignalSpy told(&p.workspace.selection(), &Selection::changed);
    p.session.undoStack().push(
        new Utils::MoveNodesCommand({chosen[0]}, NodeLink(p.at("К2")), NodeLink()));
    QVERIFY(p.at("К2/Q"));
    QTRY_COMPARE(p.selected(), QStringList({"К2/Q", "Композиция/Слой/a"}));
    QCOMPARE(told.count(), 0);
    (void)p.at("К2")->RemoveNode(p.at("К2/Q"));
    QTRY_COMPARE(p.workspace.selection().nodes(), p.links({"Композиция/Слой/a"}));
}

void TestProjectTreePanel::revealsWhatTheFilterHides()
{
    ShownPanel p;
    p.panel.tree().setFilter("К2");
    QCOMPARE(p.panel.model().hits().size(), 1u);
    p.workspace.reveal(NodeLink(p.at("К2")));
    QVERIFY(p.panel.model().isFiltered());
    p.workspace.reveal(NodeLink(p.at("К1/Q")));
    QVERIFY(!p.panel.model().isFiltered());
    QCOMPARE(p.selected(), QStringList{"К1/Q"});
    QVERIFY(p.isExpanded("К1"));
}

void TestProjectTreePanel::searchesOnWhereNothingWasFound()
{
    ShownPanel p;
    auto *line = p.panel.findChild<QLineEdit *>();
    p.press(Qt::Key_F, Qt::ControlModifier);
    QVERIFY(line->hasFocus());
    line->setText("щщ");
    QTest::keyClick(line, Qt::Key_Return); // nowhere to go
    QVERIFY(line->hasFocus());
    p.view().setFocus();
    p.press(Qt::Key_F, Qt::ControlModifier); // nothing is selected
    QVERIFY(line->hasFocus());
    line->setText("К2");
    QTest::keyClick(line, Qt::Key_Return);
    QVERIFY(p.view().hasFocus());
    QCOMPARE(p.selected(), QStringList{"К2"});
}

void TestProjectTreePanel::copiesPaths()
{
    ShownPanel p;
    p.select({"К2/T", "К1/P"});
    p.press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("К1/P\nК2/T"));
}

void TestProjectTreePanel::keepsWhatIsExpanded()
{
    ShownPanel p;
    p.view().expand(p.panel.model().indexOf(NodeLink(p.at("К1"))));
    p.panel.tree().setFilter("T");
    QVERIFY(p.isExpanded("К2")); // the way to what was found
    p.panel.tree().setFilter({});
    QVERIFY(p.isExpanded("К1"));
    QVERIFY(!p.isExpanded("К2"));
    p.select({"К1"});
    p.press(Qt::Key_Down, Qt::AltModifier);
    QVERIFY(p.isExpanded("К1"));
    std::unique_ptr<ConfigNode> taken = p.root()->RemoveNode(NodeLink(p.at("К1")));
    QVERIFY(p.root()->AddNode(taken));
    QVERIFY(p.isExpanded("К1"));
}

void TestProjectTreePanel::opensDocumentsAndFolders()
{
    ShownPanel p;
    p.add("menuItem", p.add("menu", p.root(), "Меню")); // what no document shows
    const QSignalSpy opened(&p.workspace, &Workspace::openRequested);
    p.select({"Меню"});
    p.press(Qt::Key_Return);
    QVERIFY(p.isExpanded("Меню"));
    p.press(Qt::Key_Return);
    QVERIFY(!p.isExpanded("Меню"));
    QCOMPARE(opened.count(), 0);
    p.select({"Композиция/Слой/a"});
    p.press(Qt::Key_Return);
    QCOMPARE(opened.count(), 1);
}

void TestProjectTreePanel::listsUsages()
{
    ShownPanel p;
    UsagesPanel usages(p.workspace, &p.window);
    p.select({"К1/T"});
    p.press(Qt::Key_F12, Qt::ShiftModifier);
    QCOMPARE(usages.model().rowCount(), 2);
    (void)p.at("Композиция/Слой/a")->RemoveLink(NodeLink(p.at("К1/T")));
    QTRY_COMPARE(usages.model().rowCount(), 1);
    emit usages.view().activated(usages.model().index(0, 0));
    QCOMPARE(p.selected(), QStringList{"Композиция/Слой/b"});
}

void TestProjectTreePanel::letsTheProjectGo()
{
    ShownPanel p;
    UsagesPanel usages(p.workspace, &p.window);
    usages.setTargets(p.links({"К1/T"}));
    p.panel.tree().setFilter("T");
    QVERIFY(p.panel.isEnabled());
    p.session.close();
    QVERIFY(!p.panel.isEnabled());
    QCOMPARE(p.panel.model().rowCount(), 0);
    QCOMPARE(usages.model().rowCount(), 0);
    for (const TreeCommand &command : TreeCommands()) {
        if (*command.keys)
            QTest::keySequence(&p.view(), QKeySequence(QString::fromLatin1(command.keys)));
    }
}

QTEST_MAIN(TestProjectTreePanel)
#include "tst_project_tree_panel.moc"
