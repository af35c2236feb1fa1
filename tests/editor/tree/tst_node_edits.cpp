#include "editor/tree/NodeEdits.h"

#include "editor/OpenProject.h"
#include "editor/sceneview/PasteReportDialog.h"
#include "support/Rows.h"

#include "nodes/alarms/alarmLimit.h"
#include "nodes/visual/BasicWidget.h"
#include "widgets/scene/editing/ElementClipboard.h"

#include <QApplication>
#include <QClipboard>
#include <QLoggingCategory>
#include <QTreeWidget>

#include <functional>

using namespace Editor;
using namespace Nodes;

namespace {

using Edit = std::function<bool(NodeEdits &, OpenProject &)>;

} // namespace
Q_DECLARE_METATYPE(Edit)
namespace {

const QStringList first{".К1", "..T", "..P", "..Q"};
const QStringList second{".К2", "..T", "..P"};
const QStringList screen{".Композиция", "..Слой", "...a", "...b", "...c"};

QStringList tree(const QStringList &one, const QStringList &two, const QStringList &three = screen)
{
    return QStringList{"project"} + one + two + three;
}

NodeType signalType()
{
    return ProjectFixture::kind("memorySignal").type;
}

} // namespace

class TestNodeEdits : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLoggingCategory::setFilterRules("station.undo=false"); }
    void editsInOneStep_data();
    void editsInOneStep();
    void refuses_data();
    void refuses();
    void copiesLinkWithinThemselves();
    void listsLinksThatLeadNowhereAfterAPaste();
    void keepsLinksOfWhatIsMoved();
    void changesNothingReadOnly();
    void aFreshLimitIsNotReached();
};

void TestNodeEdits::editsInOneStep_data()
{
    const Rows<Edit, QString, QStringList> add("edit", "text", "rows");
    add(
        "rename", [](auto &e, auto &p) { return e.rename(p.at("К1/P"), " Давление "); },
        "Переименование узла P в Давление", tree({".К1", "..T", "..Давление", "..Q"}, second));
    add(
        "create", [](auto &e, auto &p) { return e.create(signalType(), p.at("К2")).isValid(); },
        "Добавление узла Внутренний сигнал",
        tree(first, second + QStringList{"..Внутренний сигнал"}));
    add(
        "move to another parent, before one",
        [](auto &e, auto &p) { return e.move(p.links({"К1/Q"}), p.at("К2"), p.at("К2/P")); },
        "Перемещение узла Q", tree(first.mid(0, 3), {".К2", "..T", "..Q", "..P"}));
    add(
        "two up past one",
        [](auto &e, auto &p) {
            return e.shift(p.links({"К1/P", "К1/Q"}), true);
        },
        "Перемещение узлов выше", tree({".К1", "..P", "..Q", "..T"}, second));
    add(
        "two up, of which one is there already",
        [](auto &e, auto &p) {
            return e.shift(p.links({"К1/T", "К1/Q"}), true);
        },
        "Перемещение узлов выше", tree({".К1", "..T", "..Q", "..P"}, second));
    add(
        "down below two parents",
        [](auto &e, auto &p) {
            return e.shift(p.links({"К1/T", "К2/T"}), false);
        },
        "Перемещение узлов ниже", tree({".К1", "..P", "..T", "..Q"}, {".К2", "..P", "..T"}));
    add(
        "duplicate after the last",
        [](auto &e, auto &p) {
            return e.duplicate(p.links({"К1/T", "К1/P"})).size() == 2;
        },
        "Копирование группы узлов", tree({".К1", "..T", "..P", "..T 2", "..P 2", "..Q"}, second));
    add(
        "duplicate the last",
        [](auto &e, auto &p) { return e.duplicate(p.links({"К2/P"})).size() == 1; },
        "Копирование узла P", tree(first, second + QStringList{"..P 2"}));
    add(
        "move below a node that takes it",
        [](auto &e, auto &p) { return e.moveNear(p.links({"К1/Q"}), p.at("К2")).size() == 1; },
        "Перемещение узла Q", tree(first.mid(0, 3), second + QStringList{"..Q"}));
    add(
        "move beside one that takes none",
        [](auto &e, auto &p) { return e.moveNear(p.links({"К1/Q"}), p.at("К2/T")).size() == 1; },
        "Перемещение узла Q", tree(first.mid(0, 3), {".К2", "..T", "..Q", "..P"}));
    add(
        "remove what nobody refers to",
        [](auto &e, auto &p) {
            return e.remove(p.links({"К2/T", "К2/P"}));
        },
        "Удаление группы узлов", tree(first, {".К2"}));
}

void TestNodeEdits::editsInOneStep()
{
    QFETCH(Edit, edit);
    QFETCH(QStringList, rows);
    OpenProject project;
    NodeEdits edits(project.workspace);
    const std::string before = project.text();
    QVERIFY(edit(edits, project));
    QCOMPARE(project.names(), rows);
    QUndoStack &stack = project.session.undoStack();
    QCOMPARE(stack.count(), 1);
    QTEST(stack.undoText(), "text");
    stack.undo();
    QCOMPARE(project.text(), before);
    stack.redo();
    QCOMPARE(project.names(), rows);
    QCOMPARE(project.told, QStringList());
}

void TestNodeEdits::refuses_data()
{
    const Rows<Edit, bool> add("edit", "isTold");
    const auto taken = [](auto &e, auto &p) { return e.move(p.links({"К1/T"}), p.at("К2"), {}); };
    const auto same = [](auto &e, auto &p) { return e.rename(p.at("К1/T"), "P"); };
    add("a name that a sibling has", same, true);
    add(
        "a name that is none", [](auto &e, auto &p) { return e.rename(p.at("К1/T"), "a/b"); },
        true);
    add(
        "its own name", [](auto &e, auto &p) { return e.rename(p.at("К1/T"), "T"); }, false);
    add("a place where the name is taken", taken, true);
    add(
        "a kind that may not stand there",
        [](auto &e, auto &p) { return e.move(p.links({"К1/T"}), p.layer, {}); }, true);
    add(
        "a place below itself",
        [](auto &e, auto &p) { return e.move(p.links({"К1"}), p.at("К1/T"), {}); }, true);
    add(
        "the root", [](auto &e, auto &p) { return e.move({p.root()}, p.at("К1"), {}); }, true);
    add(
        "copies of a kind that may not stand there",
        [](auto &e, auto &p) { return !e.copyTo(p.links({"К1/T"}), p.layer, {}).empty(); }, true);
    add(
        "a kind that may not be made there",
        [](auto &e, auto &p) { return e.create(signalType(), p.layer).isValid(); }, true);
    add(
        "up from the first place",
        [](auto &e, auto &p) {
            return e.shift(p.links({"К1/T", "К1/P"}), true);
        },
        false);
    add(
        "nothing on the clipboard",
        [](auto &e, auto &p) { return !e.pasteNear(p.at("К1")).empty(); }, true);
    add(
        "removal of the root", [](auto &e, auto &p) { return e.remove({p.root()}); }, false);
}

void TestNodeEdits::refuses()
{
    QFETCH(Edit, edit);
    QFETCH(bool, isTold);
    OpenProject project;
    NodeEdits edits(project.workspace);
    QObject::connect(&project.session, &ProjectSession::refused, &project.window,
                     [&](const QString &text) { project.told << text; });
    QApplication::clipboard()->setText("a text");
    const std::string before = project.text();
    const auto count = project.project.GetNodeCount();
    edit(edits, project);
    QCOMPARE(project.text(), before);
    QCOMPARE(project.session.undoStack().count(), 0);
    QCOMPARE(!project.told.isEmpty(), isTold);
    QCOMPARE(project.project.GetNodeCount(), count); // no clone is left behind
}

void TestNodeEdits::listsLinksThatLeadNowhereAfterAPaste()
{
    OpenProject project;
    NodeEdits edits(project.workspace);
    Widgets::ElementClipboard::put(project.project, project.links({"Композиция/Слой/a"}));
    QCOMPARE(edits.pasteNear(NodeLink(project.layer)).size(), 1u);
    QVERIFY(!project.window.findChild<PasteReportDialog *>()); // all is there
    (void)project.at("К1")->RemoveNode(project.at("К1/T"));
    const NodeLinks pasted = edits.pasteNear(NodeLink(project.layer));
    QCOMPARE(pasted.size(), 1u);
    const auto *dialog = project.window.findChild<PasteReportDialog *>();
    QVERIFY(dialog && dialog->isVisible());
    const auto *rows = dialog->findChild<QTreeWidget *>();
    QCOMPARE(rows->topLevelItemCount(), 1);
    QCOMPARE(rows->topLevelItem(0)->text(2), QString("К1/T"));
    QCOMPARE(project.told.size(), 1);
}

void TestNodeEdits::copiesLinkWithinThemselves()
{
    OpenProject project;
    NodeEdits edits(project.workspace);
    const NodeLinks copies = edits.copyTo(project.links({"К1", "Композиция"}), project.root(), {});
    QCOMPARE(copies.size(), 2u);
    QCOMPARE(project.signalOf("Композиция 2/Слой/a"), std::string("К1 2/T"));
    QCOMPARE(project.signalOf("Композиция/Слой/a"), std::string("К1/T"));
}

void TestNodeEdits::keepsLinksOfWhatIsMoved()
{
    OpenProject project;
    NodeEdits edits(project.workspace);
    QVERIFY(edits.move(project.links({"К1/Q"}), project.at("К2"), {}));
    QVERIFY(edits.rename(project.at("К2"), "Котёл"));
    QCOMPARE(project.signalOf("Композиция/Слой/c"), std::string("Котёл/Q"));
}

void TestNodeEdits::changesNothingReadOnly()
{
    OpenProject project;
    NodeEdits edits(project.workspace);
    QVERIFY(edits.isAllowed());
    const std::string before = project.text();
    const auto count = project.project.GetNodeCount();
    project.session.setReadOnly("занят");
    QVERIFY(!edits.isAllowed());
    QVERIFY(!edits.rename(project.at("К1"), "x"));
    QVERIFY(!edits.create(signalType(), project.at("К1")).isValid());
    QVERIFY(edits.duplicate(project.links({"К1"})).empty());
    QVERIFY(!edits.remove(project.links({"К2"})));
    QCOMPARE(project.text(), before);
    QCOMPARE(project.project.GetNodeCount(), count);
}

void TestNodeEdits::aFreshLimitIsNotReached()
{
    OpenProject project;
    ConfigNode *signal = project.at("К1/T");
    QVERIFY(signal->SetPropertyText("minimum", "-50") && signal->SetPropertyText("maximum", "150"));
    NodeEdits edits(project.workspace);
    const NodeType kind = ProjectFixture::kind("alarmLimit").type;
    const NodeLink made = edits.create(kind, NodeLink(signal));
    const auto *alarm = dynamic_cast<const alarmLimit *>(made.GetNode());
    QVERIFY(alarm);
    QCOMPARE(alarm->GetLimit(), 130.0);
    QCOMPARE(project.session.undoStack().count(), 1);
    // Without a range there is nothing to know.
    QVERIFY(signal->SetPropertyText("maximum", "-50"));
    const NodeLink second = edits.create(kind, NodeLink(signal));
    QCOMPARE(dynamic_cast<const alarmLimit &>(*second.GetNode()).GetLimit(), 0.0);
}

QTEST_MAIN(TestNodeEdits)
#include "tst_node_edits.moc"
