#include "editor/usages/Removal.h"
#include "editor/usages/RemovalDialog.h"
#include "editor/usages/UsagesModel.h"

#include "editor/OpenProject.h"
#include "editor/picker/NodePicker.h"
#include "editor/tree/NodeEdits.h"
#include "support/Rows.h"
#include "support/WhenShown.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTreeView>
#include <QTreeWidget>

using namespace Editor;
using namespace Nodes;

namespace {

void press(const QWidget &dialog, const char *button)
{
    dialog.findChild<QPushButton *>(button)->click();
}

} // namespace

class TestRemoval : public QObject
{
    Q_OBJECT

private slots:
    void findsLinksFromOutsideOnly();
    void asksWhereLinksWouldGo_data();
    void asksWhereLinksWouldGo();
    void picksTheReplacementFromTheTree();
    void listsWhoRefersToTheChosen();
    void confirmsForOthers_data();
    void confirmsForOthers();
};

void TestRemoval::findsLinksFromOutsideOnly()
{
    OpenProject project;
    QCOMPARE(FindUsages({project.at("К1/T")}).size(), 2u);
    QCOMPARE(FindUsagesFromOutside(project.links({"К1"})).size(), 3u);
    QCOMPARE(FindUsagesFromOutside(project.links({"К1", "Композиция/Слой/a"})).size(), 2u);
    QVERIFY(FindUsagesFromOutside(project.links({"К1", "Композиция"})).empty());
    QCOMPARE(FindLinksOf(project.links({"Композиция", "Композиция/Слой"}), project.project).size(),
             3u);
}

void TestRemoval::asksWhereLinksWouldGo_data()
{
    const Rows<std::string, std::string, bool, std::string, std::string> add(
        "button", "replacement", "isRemoved", "a", "c");
    add("delete", "remove", "", true, "", "");
    add("replace", "remove", "К2/T", true, "К2/T", "");
    add("by a node of another family", "remove", "Композиция", true, "", "");
    add("cancel", "", "К2/T", false, "К1/T", "К1/Q");
}

void TestRemoval::asksWhereLinksWouldGo()
{
    QFETCH(std::string, button);
    QFETCH(std::string, replacement);
    QFETCH(bool, isRemoved);
    OpenProject project;
    NodeEdits edits(project.workspace);
    const std::string before = project.text();
    int targets = 0;
    const WhenShown<RemovalDialog> act([&](RemovalDialog &dialog) {
        targets = dialog.findChild<QTreeWidget *>()->topLevelItemCount();
        dialog.replace(project.links({"К1/T"}), NodeLink(project.at(replacement.c_str())));
        if (!button.empty())
            press(dialog, button.c_str());
        else
            dialog.reject();
    });
    QCOMPARE(edits.remove(project.links({"К1"})), isRemoved);
    QCOMPARE(targets, 2); // T and Q are shown, P is not
    QTEST(project.signalOf("Композиция/Слой/a"), "a");
    QTEST(project.signalOf("Композиция/Слой/c"), "c");
    QCOMPARE(project.at("К1") == nullptr, isRemoved);
    QCOMPARE(project.session.undoStack().count(), isRemoved ? 1 : 0);
    project.session.undoStack().undo();
    QCOMPARE(project.text(), before);
}

void TestRemoval::picksTheReplacementFromTheTree()
{
    OpenProject project;
    RemovalDialog dialog(project.workspace, project.links({"К1/T"}),
                         FindUsagesFromOutside(project.links({"К1/T"})));
    NodeLinks tried;
    const WhenShown<NodePicker> act([&](NodePicker &picker) {
        for (const char *path : {"К2", "К1/T", "К2/P"}) { // a folder, what goes, a signal
            picker.setCurrent(NodeLink(project.at(path)).GetNodeId());
            const NodeLinks chosen = picker.chosen();
            tried.push_back(chosen.empty() ? NodeLink() : chosen.front());
        }
        picker.findChild<QDialogButtonBox *>()->accepted();
    });
    press(dialog, "pick");
    QCOMPARE(tried, NodeLinks({{}, {}, NodeLink(project.at("К2/P"))}));
    QCOMPARE(dialog.replacements().size(), 1u);
    QCOMPARE(dialog.replacements().front().second, tried.back());
}

void TestRemoval::listsWhoRefersToTheChosen()
{
    OpenProject project;
    RemovalDialog dialog(project.workspace, project.links({"К1"}),
                         FindUsagesFromOutside(project.links({"К1"})));
    const QAbstractItemModel *list = dialog.findChild<QTreeView *>("users")->model();
    QCOMPARE(list->rowCount(), 3);
    auto *targets = dialog.findChild<QTreeWidget *>();
    targets->setCurrentItem(targets->topLevelItem(1)); // Q
    QCOMPARE(list->rowCount(), 1);
    QCOMPARE(list->index(0, UsagesModel::ColumnPath).data().toString(),
             QString("Композиция/Слой/c"));
    QCOMPARE(list->index(0, UsagesModel::ColumnProperty).data().toString(), QString("Сигнал"));
}

void TestRemoval::confirmsForOthers_data()
{
    const Rows<std::string, bool, bool> add("node", "isAsked", "isConfirmed");
    add("nobody refers to it", "К1/P", false, true);
    add("confirmed", "К1/T", true, true);
    add("cancelled", "К1/T", true, false);
    add("the root", "", false, false);
}

void TestRemoval::confirmsForOthers()
{
    QFETCH(std::string, node);
    QFETCH(bool, isAsked);
    QFETCH(bool, isConfirmed);
    OpenProject project;
    bool wasAsked = false;
    const WhenShown<RemovalDialog> act([&](RemovalDialog &dialog) {
        wasAsked = true;
        dialog.replace(project.links({"К1/T"}), NodeLink(project.at("К2/T")));
        isConfirmed ? dialog.accept() : dialog.reject();
    });
    NodeLinks nodes{NodeLink(project.at(node.c_str()))};
    const std::optional<RemovalPlan> plan = askRemoval(project.workspace, nodes);
    QCOMPARE(bool(plan), isConfirmed);
    QCOMPARE(wasAsked, isAsked);
    if (!plan)
        return;
    // Links and nodes are one step.
    QVERIFY(project.workspace.push(makeRemoval(*plan)));
    QCOMPARE(project.session.undoStack().count(), 1);
    QVERIFY(!nodes.front().GetNode());
    QCOMPARE(project.signalOf("Композиция/Слой/a"), std::string(isAsked ? "К2/T" : "К1/T"));
    project.session.undoStack().undo();
    QVERIFY(nodes.front().GetNode());
    QCOMPARE(project.signalOf("Композиция/Слой/a"), std::string("К1/T"));
}

QTEST_MAIN(TestRemoval)
#include "tst_removal.moc"
