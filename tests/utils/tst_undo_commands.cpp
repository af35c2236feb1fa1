#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/CopyNodeWidgetGroupCommand.h"
#include "utils/undo/NewRemoveNodeLinkCommand.h"

#include "nodes/ProjectFixture.h"
#include "nodes/visual/BasicWidget.h"

#include <QUndoStack>
#include <QtTest>

using namespace Nodes;
using namespace Utils;

namespace {

constexpr auto xProperty = BasicWidget::Prop::X;
constexpr auto signalProperty = BasicWidget::Prop::Signal;
constexpr auto onPressProperty = BasicWidget::Prop::OnPress;

/// Labels a to d on a layer, and one elsewhere that refers to three of them.
struct Drawing : ProjectFixture
{
    Drawing() : layer(addLayer()), other(add("label", addLayer(), "other"))
    {
        for (const char *name : {"a", "b", "c", "d"})
            labels.emplace_back(add("label", layer, name));
        const NodeLinks links{labels[3], labels[2], labels[1]};
        (void)other->SetProperty(onPressProperty, links);
        (void)other->SetProperty(signalProperty, labels[1]);
        (void)labels[3]->SetProperty(signalProperty, labels[1]);
    }
    NodesArray clones(std::initializer_list<NodeLink> of)
    {
        NodesArray made;
        (void)project.CloneNodes(NodesArray(NodeLinks(of)), made, true);
        return made;
    }
    std::string text() const { return root()->SerializeXML(); }

    ConfigNode *layer;
    ConfigNode *other;
    NodeLinks labels;
    QUndoStack stack;
};

using Make = std::function<NodeCommand *(Drawing &)>;

} // namespace
Q_DECLARE_METATYPE(Make)
namespace {

void addRow(const char *name, const char *text, const Make &make)
{
    QTest::newRow(name) << make << QString::fromUtf8(text);
}

} // namespace

class UndoCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void doneUndoneAndRedone_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<QString>("text");
        addRow("property", "Изменение свойства X виджета a",
               [](Drawing &d) { return new ChangePropertyCommand(d.labels[0], xProperty, 77); });
        addRow("property set at once", "Изменение свойства X виджета a", [](Drawing &d) {
            auto *command = new ChangePropertyCommand(d.labels[0], xProperty, 5);
            (void)command->setPropertyCommand();
            return command;
        });
        addRow("one removed", "Удаление виджета b",
               [](Drawing &d) { return new NewRemoveNodeLinkCommand(d.labels[1], d.layer); });
        addRow("group removed, later one first", "Удаление группы виджетов", [](Drawing &d) {
            return new RemoveNodeLinkGroup(d.layer, {d.labels[1], d.labels[0], d.labels[1]});
        });
        addRow("layer and what stands on it", "Удаление группы виджетов", [](Drawing &d) {
            return new RemoveNodeLinkGroup(d.layer->GetParent(), {d.labels[1], d.layer, d.other});
        });
        addRow("clone added", "Добавление виджета a", [](Drawing &d) {
            return new AddNodeLinkCommand(d.clones({d.labels[0]})[0], d.layer);
        });
        addRow("group pasted", "Копирование группы виджетов", [](Drawing &d) {
            return new CopyNodeWidgetGroupCommand(d.layer, d.clones({d.labels[1], d.labels[3]}),
                                                  {});
        });
    }

    void doneUndoneAndRedone()
    {
        QFETCH(Make, make);
        Drawing d;
        const NodeLink other(d.other);
        const std::string before = d.text();
        d.stack.push(make(d));
        const std::string after = d.text();
        QVERIFY(after != before);
        QTEST(d.stack.undoText(), "text");
        for (const NodeLink &label : d.labels)
            QVERIFY(label.isValid() || !other.isValid() || !other->IsLinked(label));
        for (int round = 0; round < 2; ++round) {
            d.stack.undo();
            QCOMPARE(d.text(), before);
            d.stack.redo();
            QCOMPARE(d.text(), after);
        }
    }

    void failureLeavesNoStep_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<QString>("report"); // none for what changes nothing
        addRow("same value", "",
               [](Drawing &d) { return new ChangePropertyCommand(d.labels[0], xProperty, 0); });
        addRow("wrong type", "wrong type", [](Drawing &d) {
            return new ChangePropertyCommand(d.labels[0], xProperty, std::string("1"));
        });
        addRow("nothing to remove", "no node to remove",
               [](Drawing &d) { return new RemoveNodeLinkGroup(d.layer, {NodeLink(99999ul)}); });
        addRow("one of two refused", "may not stand below", [](Drawing &d) {
            return new CopyNodeWidgetGroupCommand(d.layer, d.clones({d.other, d.layer}), {5, 5});
        });
        addRow("stands elsewhere", "outside of the tree",
               [](Drawing &d) { return new AddNodeLinkCommand(d.other, d.layer); });
    }

    void failureLeavesNoStep()
    {
        QFETCH(Make, make);
        QFETCH(QString, report);
        Drawing d;
        const std::string before = d.text();
        if (!report.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not done: .*" + report));
        d.stack.push(make(d));
        QCOMPARE(d.stack.count(), 0);
        QCOMPARE(d.text(), before);
    }

    void pastedGroupKeepsItsShape()
    {
        Drawing d;
        dynamic_cast<BasicWidget *>(d.labels[1].GetNode())->SetPosition(40, 10);
        dynamic_cast<BasicWidget *>(d.labels[3].GetNode())->SetPosition(20, 60);
        const NodesArray pasted = d.clones({d.labels[1], d.labels[3]});
        d.stack.push(new CopyNodeWidgetGroupCommand(d.layer, pasted, {300, 400}));
        const auto *b = dynamic_cast<BasicWidget *>(d.layer->GetNodeAt(4));
        const auto *last = dynamic_cast<BasicWidget *>(d.layer->GetNodeAt(5));
        QCOMPARE(b->GetPosition(), (NPoint{320, 400}));
        QCOMPARE(last->GetPosition(), (NPoint{300, 450}));
        QCOMPARE(last->GetSignalLink(), NodeLink(b)); // the copy of d shows the copy of b
    }

    void nodeThatCannotReturnIsKept()
    {
        Drawing d;
        const std::string before = d.text();
        d.stack.push(new NewRemoveNodeLinkCommand(d.labels[1], d.layer));
        ConfigNode *composition = d.layer->GetParent();
        auto layer = composition->RemoveNode(d.layer);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not undone: .*parent node"));
        d.stack.undo();
        QCOMPARE(d.stack.count(), 1);
        QVERIFY(composition->AddNode(layer, 0));
        d.stack.redo();
        d.stack.undo();
        QCOMPARE(d.text(), before);
    }

    void commandsOutliveTheProject()
    {
        QUndoStack stack;
        {
            Drawing d;
            stack.push(new NewRemoveNodeLinkCommand(d.labels[1], d.layer));
            stack.push(new ChangePropertyCommand(d.labels[0], xProperty, 5));
        }
        for (int step = 0; step < 2; ++step) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not undone: .*node"));
            stack.undo();
        }
        QCOMPARE(stack.count(), 1); // still holds its node
    }
};

QTEST_MAIN(UndoCommandsTest)
#include "tst_undo_commands.moc"
