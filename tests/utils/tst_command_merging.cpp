#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/RemoveNodeLinkGroup.h"

#include "nodes/ProjectFixture.h"
#include "support/Rows.h"

#include <QUndoStack>

using namespace Nodes;
using namespace Utils;

namespace {

constexpr unsigned xProperty = 11001;
constexpr unsigned yProperty = 11002;

/// Two labels, and how often each has told of its properties.
struct Labels : ProjectFixture
{
    Labels()
    {
        for (int i = 0; i < 2; ++i)
            connections[i] =
                label[i]->ConnectPropertyChanged([this, i](BasicProperty *) { ++told[i]; });
    }
    NodeCommand *change(int which, unsigned property, int value, QUndoCommand *parent = nullptr)
    {
        return new ChangePropertyCommand(label[which], property, value, parent);
    }
    void push(NodeCommand *command, const Interaction &interaction = {})
    {
        command->setInteraction(interaction);
        stack.push(command);
    }
    /// Both labels by a step to the right and down, as one command.
    void drag(int to, const Interaction &interaction)
    {
        auto *group = new CommandGroup("drag");
        for (int i = 0; i < 2; ++i) {
            auto *element = new CommandGroup("element", group);
            change(i, xProperty, to + i, element);
            change(i, yProperty, to, element);
        }
        push(group, interaction);
    }
    int value(int which, const char *key) const { return std::stoi(textOf(*label[which], key)); }
    std::string text() const { return root()->SerializeXML(); }

    ConfigNode *layer = addLayer();
    ConfigNode *label[2] = {add("label", layer, "a"), add("label", layer, "b")};
    int told[2] = {0, 0};
    ScopedConnection connections[2];
    QUndoStack stack;
};

} // namespace

class CommandMergingTest : public QObject
{
    Q_OBJECT

private slots:
    void stepsOfOneDragAreOneEntry()
    {
        Labels f;
        const std::string before = f.text();
        const Interaction drag = Interaction::begin();
        for (int x = 1; x <= 5; ++x)
            f.drag(x, drag);
        QCOMPARE(f.stack.count(), 1);
        QCOMPARE(f.told[0], 5); // two properties a step, told of together
        QCOMPARE(f.told[1], 5);
        f.stack.undo();
        QCOMPARE(f.text(), before);
        f.stack.redo();
        QCOMPARE(f.value(1, "x"), 6);
        QCOMPARE(f.value(0, "y"), 5);
        f.drag(9, Interaction::begin());
        QCOMPARE(f.stack.count(), 2);
        f.stack.undo();
        QCOMPARE(f.value(1, "x"), 6);
    }

    void whatDoesNotMerge_data()
    {
        const Rows<QString, int> row("second", "count");
        row("the same", "same", 1);
        row("another property", "property", 2);
        row("another node", "node", 2);
        row("another drag", "drag", 2);
        row("no drag", "none", 2);
        row("a group", "group", 2);
        row("back where it began", "back", 0);
        row("refused", "refused", 1);
        row("after saving", "saved", 2);
    }

    void whatDoesNotMerge()
    {
        QFETCH(QString, second);
        Labels f;
        const Interaction drag = Interaction::begin();
        f.push(f.change(0, xProperty, 5), drag);
        const std::string once = f.text();
        if (second == "saved")
            f.stack.setClean();
        if (second == "refused")
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not done: .*out of range"));
        if (second == "group") {
            f.drag(7, drag);
        } else {
            const int which = second == "node" ? 1 : 0;
            const int value = second == "back" ? 0 : second == "refused" ? 99999 : 6;
            f.push(f.change(which, second == "property" ? yProperty : xProperty, value),
                   second == "drag"   ? Interaction::begin()
                   : second == "none" ? Interaction()
                                      : drag);
        }
        QTEST(f.stack.count(), "count");
        if (f.stack.count() == 2) {
            f.stack.undo();
            QCOMPARE(f.text(), once);
        }
    }

    void cancelledDragLeavesNothing()
    {
        Labels f;
        f.push(f.change(0, xProperty, 3));
        const std::string before = f.text();
        const Interaction drag = Interaction::begin();
        f.drag(4, drag);
        f.drag(5, drag);
        f.push(f.change(0, yProperty, 9), drag); // of another kind: an entry of its own
        NodeCommand::cancel(drag, &f.stack);
        QCOMPARE(f.text(), before);
        QCOMPARE(f.stack.count(), 1);
        NodeCommand::cancel(drag, &f.stack); // again, and with what is not its own on top
        QCOMPARE(f.stack.index(), 1);
    }

    void groupIsAllOrNothing()
    {
        Labels f;
        const std::string before = f.text();
        const auto make = [&f](int last) {
            auto *group = new CommandGroup("group");
            f.change(0, xProperty, 5, group);
            new ChangeTextCommand(f.label[1], ChangeTextCommand::Name, "c", group);
            new RemoveNodeLinkGroup(f.layer, {f.label[1]}, group);
            f.change(0, yProperty, last, group);
            return group;
        };
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not done: .*out of range"));
        f.push(make(99999));
        QCOMPARE(f.text(), before);
        QCOMPARE(f.stack.count(), 0);
        f.push(make(7));
        QCOMPARE(f.stack.count(), 1);
        QCOMPARE(f.layer->GetNodeCount(), 1);
        f.stack.undo();
        QCOMPARE(f.text(), before);
    }

    void groupThatCannotBeUndoneStaysDone_data()
    {
        const Rows<bool> row("isCancelled");
        row("undone", false);
        row("taken back", true);
    }

    void groupThatCannotBeUndoneStaysDone()
    {
        QFETCH(bool, isCancelled);
        Labels f;
        const Interaction drag = Interaction::begin();
        auto *group = new CommandGroup("group");
        new RemoveNodeLinkGroup(f.layer, {f.label[1]}, group);
        f.change(0, xProperty, 5, group);
        f.push(group, drag);
        const NodeLink layer(f.layer);
        auto taken = f.layer->GetParent()->RemoveNode(layer);
        for (const char *what : {"Изменение", "Удаление"})
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString(what) + ".*not undone"));
        isCancelled ? NodeCommand::cancel(drag, &f.stack) : f.stack.undo();
        QCOMPARE(f.stack.count(), 1); // it still holds a node
        QCOMPARE(textOf(*f.label[0], "x"), std::string("5"));
    }

    void groupThatChangesNothingLeavesNoEntry()
    {
        Labels f;
        f.drag(0, Interaction());
        QCOMPARE(f.stack.count(), 1); // the second goes to 1
        f.drag(0, Interaction());
        QCOMPARE(f.stack.count(), 1);
        f.stack.push(new CommandGroup("empty"));
        QCOMPARE(f.stack.count(), 1);
    }
};

QTEST_MAIN(CommandMergingTest)
#include "tst_command_merging.moc"
