#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/CopyNodeWidgetGroupCommand.h"
#include "utils/undo/MoveNodesCommand.h"
#include "utils/undo/NewRemoveNodeLinkCommand.h"

#include "nodes/ProjectFixture.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/elements/widgetBargraph.h"
#include "nodes/visual/windows/BasicLayer.h"
#include "support/Rows.h"

#include <QLoggingCategory>
#include <QUndoStack>
#include <QtTest>

#include <random>

using namespace Nodes;
using namespace Utils;

namespace {

constexpr auto xProperty = BasicWidget::Prop::X;
constexpr auto signalProperty = BasicWidget::Prop::Signal;
constexpr auto onPressProperty = BasicWidget::Prop::OnPress;

/// Labels a to d on a layer, and one elsewhere that refers to three of them.
struct Drawing : ProjectFixture
{
    Drawing()
        : layer(addLayer()),
          other(add("label", addLayer(), "other")),
          bar(add("bargraph", addLayer(), "bar"))
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
    ConfigNode *bar;
    NodeLinks labels;
    QUndoStack stack;
};

/// Commands at random, on whatever stands in the drawing by then.
struct RandomCommands
{
    explicit RandomCommands(Drawing &drawing, unsigned seed) : d(drawing), random(seed) {}

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); }
    NodeLink any()
    {
        const NodeLinks all = d.root()->GetNodes(true);
        return all.empty() ? NodeLink(d.root()) : all[std::size_t(pick(int(all.size())))];
    }
    NodeLink anyLayer()
    {
        NodeLinks layers;
        d.project.FindNodes(NodeType(NodeType::SubtypeLayer), &layers);
        return layers.empty() ? NodeLink(d.root()) : layers[std::size_t(pick(int(layers.size())))];
    }
    NodeCommand *make(QUndoCommand *parent = nullptr)
    {
        const NodeLink node = any();
        const NodeLink layer = anyLayer();
        switch (pick(parent ? 6 : 8)) {
        case 0:
            return new ChangePropertyCommand(node, xProperty, pick(100), parent);
        case 1:
            return new ChangePropertyCommand(node, onPressProperty, NodeLinks{any(), any()},
                                             parent);
        case 2:
            return new ChangeTextCommand(node, ChangeTextCommand::Name,
                                         std::string(1, char('a' + pick(8))), parent);
        case 3:
            return new MoveNodesCommand({node, any(), any()}, layer, any(), parent);
        case 4:
            if (pick(3) != 0)
                return new MoveNodesCommand({node}, layer, any(), parent);
            return new RemoveNodeLinkGroup(node->GetParent(), {node, any()}, parent);
        case 5:
            return new CopyNodeWidgetGroupCommand(layer, d.clones({any()}), {pick(50), pick(50)},
                                                  parent);
        case 6:
            return new AddNodeLinkCommand(d.clones({node})[0], layer);
        default: {
            auto *group = new CommandGroup("group");
            for (int i = 0; i < 3; ++i)
                make(group);
            return group;
        }
        }
    }

    Drawing &d;
    std::mt19937 random;
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
        addRow("limit that was none", "Изменение свойства Нижний предупредительный виджета bar",
               [](Drawing &d) {
                   return new ChangePropertyCommand(d.bar, widgetBargraph::Prop::Low, 10.0);
               });
        addRow("property of no element", "Изменение свойства Видимый узла Слой", [](Drawing &d) {
            return new ChangePropertyCommand(d.layer, BasicLayer::Prop::Visible, false);
        });
        addRow("layer added", "Добавление узла Слой", [](Drawing &d) {
            return new AddNodeLinkCommand(d.clones({d.layer})[0], d.layer->GetParent());
        });
        addRow("name", "Переименование узла a в z", [](Drawing &d) {
            return new ChangeTextCommand(d.labels[0], ChangeTextCommand::Name, "z");
        });
        addRow("description", "Изменение описания узла a", [](Drawing &d) {
            return new ChangeTextCommand(d.labels[0], ChangeTextCommand::Description, "about");
        });
        addRow("moved down", "Перемещение узла a", [](Drawing &d) {
            return new MoveNodesCommand({d.labels[0]}, d.layer, d.labels[2]);
        });
        addRow("group moved to another layer", "Перемещение группы узлов", [](Drawing &d) {
            return new MoveNodesCommand({d.labels[2], d.labels[0]}, d.other->GetParent(), d.other);
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
        addRow("name taken", "another child has that name", [](Drawing &d) {
            return new ChangeTextCommand(d.labels[0], ChangeTextCommand::Name, "b");
        });
        addRow("in place already", "", [](Drawing &d) {
            return new MoveNodesCommand({d.labels[1], d.labels[2]}, d.layer, d.labels[3]);
        });
        addRow("before one of themselves", "", [](Drawing &d) {
            return new MoveNodesCommand({d.labels[1], d.labels[2]}, d.layer, d.labels[1]);
        });
        addRow("one of two may not move there", "may not stand below", [](Drawing &d) {
            return new MoveNodesCommand({d.labels[0], d.other->GetParent()}, d.layer);
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

    void randomEditsAreUndoneAndRedone()
    {
        QLoggingCategory::setFilterRules("station.undo.warning=false"); // many are refused
        for (unsigned seed = 1; seed <= 20; ++seed) {
            Drawing d;
            RandomCommands commands(d, seed);
            std::vector<std::string> texts{d.text()};
            for (int step = 0; step < 40; ++step) {
                d.stack.push(commands.make());
                if (std::size_t(d.stack.count()) == texts.size())
                    texts.push_back(d.text());
                const QString where = QString("seed %1, step %2").arg(seed).arg(step);
                QVERIFY2(d.text() == texts.back(), qPrintable(where)); // refused: nothing changed
            }
            QVERIFY(texts.size() > 10);
            for (int round = 0; round < 2; ++round) {
                for (std::size_t i = texts.size(); i-- > 1;) {
                    d.stack.undo();
                    QVERIFY2(d.text() == texts[i - 1], qPrintable(QString::number(seed)));
                }
                for (std::size_t i = 1; i < texts.size(); ++i) {
                    d.stack.redo();
                    QVERIFY2(d.text() == texts[i], qPrintable(QString::number(seed)));
                }
            }
        }
        QLoggingCategory::setFilterRules(QString());
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

    void pastedNodesTakeTheLowestFreeNames_data()
    {
        const Rows<QStringList, QStringList, QStringList> row("present", "copied", "named");
        row("free", {"x"}, {"a", "b"}, {"a 2", "b 2"}); // each beside its original
        row("numbers taken", {"a 2", "a 4"}, {"a"}, {"a 3"});
        row("the same again", {"a 3"}, {"a", "a", "a"}, {"a 2", "a 4", "a 5"});
        row("numbers in other writing", {"a 02", "a 2x", "a3"}, {"a"}, {"a 2"});
        row("a name that ends in a number", {"a 2"}, {"a 2", "a"}, {"a 2 2", "a 3"});
    }

    void pastedNodesTakeTheLowestFreeNames()
    {
        QFETCH(QStringList, present);
        QFETCH(QStringList, copied);
        QFETCH(QStringList, named);
        Drawing d;
        for (const QString &name : present)
            d.add("label", d.layer, qPrintable(name));
        NodesArray pasted;
        for (const QString &name : copied) {
            NodesArray made = d.clones({d.layer->GetSubObject(name.toStdString())});
            pasted.push_back(made[0]);
        }
        const int first = d.layer->GetNodeCount();
        d.stack.push(new CopyNodeWidgetGroupCommand(d.layer, pasted, {0, 0}));
        QStringList found;
        for (int i = first; i < d.layer->GetNodeCount(); ++i)
            found << QString::fromStdString(d.layer->GetNodeAt(i)->GetName());
        QCOMPARE(found, named);
    }

    void nameThatAppearsMeanwhileIsNotGivenAgain()
    {
        Drawing d;
        const NodesArray pasted = d.clones({d.labels[0], d.labels[0]});
        bool isAdded = false;
        const ScopedConnection connection = d.layer->ConnectChildAdded([&](const NodeLink &) {
            if (!std::exchange(isAdded, true))
                d.add("label", d.layer, "a 3");
        });
        d.stack.push(new CopyNodeWidgetGroupCommand(d.layer, pasted, {0, 0}));
        QCOMPARE(QString::fromStdString(d.layer->GetNodeAt(6)->GetName()), QString("a 4"));
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
