#include "editor/project/ProjectSession.h"
#include "editor/templates/InstanceModel.h"
#include "editor/templates/TemplateCommands.h"
#include "editor/templates/TemplateMaker.h"
#include "editor/workspace/Workspace.h"

#include "nodes/actions/BasicTemplateAction.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/templates/TemplateBinding.h"
#include "nodes/templates/widgetInstance.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/undo/IUndo.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QUndoCommand>
#include <QtTest>

#include <set>

Q_DECLARE_METATYPE(std::vector<unsigned long>)
Q_DECLARE_METATYPE(std::set<unsigned long>)

using namespace Editor;
using Nodes::ConfigNode;
using Nodes::NodeLink;

namespace {

constexpr const char *plant = R"(<project format="1" id="1" name="P">
<folder id="5" name="Насос 1"><memorySignal id="10" name="Ток"/>
  <memorySignal id="11" name="Пуск" type="bool"/></folder>
<folder id="6" name="Насос 2"><memorySignal id="12" name="Ток"/>
  <memorySignal id="13" name="Пуск" type="bool"/></folder>
<folder id="7" name="Группа"><memorySignal id="15" name="Расход"/>
  <memorySignal id="16" name="Давление"/></folder>
<memorySignal id="14" name="Наружная"/>
<window id="2" name="Окно" width="800" height="600">
  <label id="20" name="A" x="100" y="200" width="80" height="32" signal="10"/>
  <button id="21" name="B" x="300" y="240" width="80" height="32" pressActions="30 31"/>
  <label id="22" name="C" x="0" y="0" text="без сигнала"/>
  <label id="23" name="D" x="100" y="200" width="80" height="32" signal="14"/>
  <label id="24" name="E" x="0" y="40" signal="15"/><label id="25" name="F" x="0" y="80" signal="16"/>
</window>
<actionWriteValue id="30" name="Пустить" signal="11" value="1"/>
<actionShowWindow id="31" name="Общее" window="2"/></project>)";

struct Plant
{
    Plant() : workspace(session, host)
    {
        std::unique_ptr<Nodes::NodesCollection> project;
        if (!Nodes::ProjectReader().ReadBuffer(plant, "test", project))
            qFatal("no project");
        session.adopt(std::move(project), QString(), Nodes::LoadReport());
    }
    ConfigNode *node(unsigned long id) { return session.project()->FindNode(id); }
    /// Makes a template of these elements; an empty result when it was refused.
    TemplateMaker::Made make(const std::vector<unsigned long> &ids, QString *whyNot = nullptr,
                             TemplateMaker::Originals originals = TemplateMaker::Originals::Stay)
    {
        Nodes::NodeLinks elements;
        for (const unsigned long id : ids)
            elements.push_back(NodeLink(id));
        TemplateMaker maker(*session.project(), elements);
        TemplateMaker::Made made;
        QString reason;
        QUndoCommand *command = maker.make("Шаблон", *session.root(), originals, made, reason);
        if (whyNot)
            *whyNot = reason;
        return command && workspace.push(command) ? made : TemplateMaker::Made();
    }
    static Nodes::TemplateBinding binding(const TemplateMaker::Made &made)
    {
        const auto &action =
            dynamic_cast<const Nodes::BasicTemplateAction &>(*made.action.GetNode());
        return {*made.window.GetNode(), action.GetArguments()};
    }

    ProjectSession session;
    QWidget host;
    Workspace workspace;
};

/// Ids that the template's own nodes lead to outside of it.
std::set<unsigned long> leadOutside(const ConfigNode &source, const Nodes::IdSet &own)
{
    std::set<unsigned long> ids;
    Nodes::VisitLinks(source, *source.GetKind(),
                      [&](const Nodes::PropertyDescriptor &, const NodeLink &link) {
                          if (!own.count(link.GetNodeId()))
                              ids.insert(link.GetNodeId());
                      });
    for (const auto &child : source.Children()) {
        const auto below = leadOutside(*child, own);
        ids.insert(below.begin(), below.end());
    }
    return ids;
}

void collect(const ConfigNode &node, Nodes::IdSet &ids)
{
    ids.insert(node.GetId());
    for (const auto &child : node.Children())
        collect(*child, ids);
}

} // namespace

class TestTemplateMaker : public QObject
{
    Q_OBJECT

private slots:
    void instancesStandForWhatWasDrawn_data();
    void instancesStandForWhatWasDrawn();
    void nothingSelectedIsTold();
    void isOneStep();
    void argumentsAreEditedInATable();
    void instancesAreAdded();
    void anInstanceTakesTheirPlace();
    void anotherTemplateIsOneStep();
    void anInstanceIsEnteredByItsTemplate();
};

void TestTemplateMaker::instancesStandForWhatWasDrawn_data()
{
    QTest::addColumn<std::vector<unsigned long>>("elements");
    QTest::addColumn<QStringList>("arguments"); // of the first instance
    QTest::addColumn<std::set<unsigned long>>("outside");
    using Ids = std::vector<unsigned long>;
    using Set = std::set<unsigned long>;
    QTest::newRow("one signal") << Ids{20} << QStringList{"Ток"} << Set{};
    QTest::newRow("signals of one pump, one by an action")
        << Ids{20, 21} << QStringList{"Насос 1"} << Set{31};
    QTest::newRow("signals of two places")
        << Ids{20, 23} << QStringList{"Ток", "Наружная"} << Set{};
    QTest::newRow("signals of a node that has no like")
        << Ids{24, 25} << QStringList{"Расход", "Давление"} << Set{};
    QTest::newRow("no signal") << Ids{22} << QStringList{} << Set{};
}

void TestTemplateMaker::instancesStandForWhatWasDrawn()
{
    QFETCH(std::vector<unsigned long>, elements);
    QFETCH(QStringList, arguments);
    QFETCH(std::set<unsigned long>, outside);
    Plant project;
    QVERIFY(project.make(elements).window.GetNode()); // an earlier one changes nothing
    const TemplateMaker::Made made = project.make(elements);
    QVERIFY(made.window.GetNode() && made.action.GetNode());
    const auto &action = dynamic_cast<const Nodes::BasicTemplateAction &>(*made.action.GetNode());
    QCOMPARE(action.GetTemplate(), made.window.GetNode());
    QStringList names;
    for (const ConfigNode *argument : action.GetArguments())
        names << QString::fromStdString(argument->GetName());
    QCOMPARE(names, arguments);
    const Nodes::TemplateBinding binding = Plant::binding(made);
    QVERIFY(binding.GetMissing().empty() && binding.GetUnused().empty());
    Nodes::IdSet own;
    collect(*made.window.GetNode(), own);
    QVERIFY(leadOutside(*made.window.GetNode(), own) == outside); // no plant node is left
    // In an instance every element shows what the original does.
    const Nodes::IdMap ids = binding.GetIds();
    for (const auto &child : made.window.GetNode()->Children()) {
        const auto *element = dynamic_cast<const Nodes::BasicWidget *>(child.get());
        if (!element || element->GetSignalLink().isEmpty())
            continue;
        QVERIFY(ids.count(element->GetSignalLink().GetNodeId()));
        const auto box = element->GetGeometry();
        QVERIFY(box.x >= 8 && box.y >= 8 && box.x < 400);
    }
}

void TestTemplateMaker::nothingSelectedIsTold()
{
    Plant project;
    QString whyNot;
    QVERIFY(!project.make({10}, &whyNot).window.GetNode()); // no element
    QVERIFY(!whyNot.isEmpty());
    QCOMPARE(project.session.undoStack().count(), 0);
}

void TestTemplateMaker::isOneStep()
{
    Plant project;
    const std::size_t before = project.session.root()->Children().size();
    const TemplateMaker::Made made = project.make({20, 21});
    QCOMPARE(project.session.root()->Children().size(), before + 2);
    project.session.undoStack().undo();
    QCOMPARE(project.session.root()->Children().size(), before);
    project.session.undoStack().redo();
    QVERIFY(Plant::binding(made).GetMissing().empty());
}

void TestTemplateMaker::argumentsAreEditedInATable()
{
    Plant project;
    const TemplateMaker::Made made = project.make({20, 21});
    InstanceModel model([&](QUndoCommand *command) { return project.workspace.push(command); });
    const QAbstractItemModelTester tester(&model);
    model.setTemplate(InstanceModel::templateOf(made.action.GetNode()));
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.columnCount(), 2);
    const QModelIndex cell = model.index(0, 1);
    QCOMPARE(cell.data(Qt::EditRole).toString(),
             QString::fromStdString(project.node(5)->GetPath()));
    const QString other = QString::fromStdString(project.node(6)->GetPath());
    QVERIFY(!model.setData(cell, "нет такого"));
    QVERIFY(model.setData(cell, other));
    QCOMPARE(cell.data().toString(), other);
    const auto stands = Plant::binding(made).GetIds(); // the signals follow the pump
    QVERIFY(
        std::any_of(stands.begin(), stands.end(), [](const auto &id) { return id.second == 12; }));
    project.session.undoStack().undo();
    QVERIFY(cell.data().toString() != other);
    QVERIFY(model.setData(cell, ""));
    QVERIFY(!Plant::binding(made).GetMissing().empty());
    project.session.setReadOnly("занят");
    QVERIFY(!model.setData(cell, other));
}

void TestTemplateMaker::instancesAreAdded()
{
    Plant project;
    const TemplateMaker::Made made = project.make({20, 21});
    InstanceModel model([&](QUndoCommand *command) { return project.workspace.push(command); });
    model.setTemplate(made.window);
    model.addInstance();
    QCOMPARE(model.rowCount(), 2);
    QVERIFY(model.index(0, 0).data() != model.index(1, 0).data());
    QVERIFY(model.index(1, 1).data(Qt::EditRole).toString().isEmpty());
    QVERIFY(model.setData(model.index(1, 1), QString::fromStdString(project.node(6)->GetPath())));
    QVERIFY(model.index(0, 1).data() != model.index(1, 1).data());
}

void TestTemplateMaker::anInstanceTakesTheirPlace()
{
    Plant project;
    QVERIFY(project.node(20)->SetPropertyText("zOrder", "7"));
    const std::size_t atRoot = project.session.root()->Children().size();
    const TemplateMaker::Made made =
        project.make({20, 21}, nullptr, TemplateMaker::Originals::Replace);
    const auto *instance = dynamic_cast<Nodes::widgetInstance *>(made.instance.GetNode());
    QVERIFY(instance && instance->GetTemplate() == made.window.GetNode());
    QVERIFY(!made.action.GetNode());
    QCOMPARE(project.session.root()->Children().size(), atRoot + 1);
    QCOMPARE(instance->GetParent(), project.node(2));
    const Nodes::NRect box = instance->GetGeometry(); // that of what it replaces
    QCOMPARE(QRect(box.x, box.y, box.width, box.height), QRect(100, 200, 280, 72));
    QCOMPARE(made.window.GetNode()->GetPropertyByValueId(Nodes::SizeProp::Width)->ToString(),
             std::string("280"));
    QCOMPARE(instance->GetZOrder(), 7);
    QVERIFY(!project.node(20));
    const Nodes::TemplateBinding binding(*instance->GetTemplate(), instance->GetArguments());
    QVERIFY(binding.GetMissing().empty() && !binding.GetIds().empty());

    InstanceModel model([&](QUndoCommand *command) { return project.workspace.push(command); });
    model.setTemplate(InstanceModel::templateOf(instance));
    QCOMPARE(model.rowCount(), 1);
    QVERIFY(!model.index(0, 1).data(Qt::EditRole).toString().isEmpty());
    model.addInstance();
    QCOMPARE(model.rowCount(), 2);
    const auto &second = dynamic_cast<Nodes::BasicWidget &>(*model.user(1).GetNode());
    QCOMPARE(second.GetParent(), project.node(2));
    QCOMPARE(second.GetPosition().x, 396);

    project.session.undoStack().undo();
    project.session.undoStack().undo();
    QCOMPARE(project.session.undoStack().index(), 0);
    QCOMPARE(project.node(20)->GetParent(), project.node(2));
    QCOMPARE(project.session.root()->Children().size(), atRoot);
    project.session.undoStack().redo();
    QVERIFY(!project.node(20) && made.instance.GetNode()->GetParent());
}

void TestTemplateMaker::anotherTemplateIsOneStep()
{
    Plant project;
    const auto replace = TemplateMaker::Originals::Replace;
    const TemplateMaker::Made inner = project.make({20}, nullptr, replace);
    const TemplateMaker::Made other = project.make({23}, nullptr, replace);
    const auto *instance = dynamic_cast<Nodes::widgetInstance *>(inner.instance.GetNode());
    project.workspace.selection().select({inner.instance, other.instance}, nullptr);
    QVERIFY(TemplateCommands::canChoose(project.workspace));
    QVERIFY(!TemplateCommands::makeChoice({inner.instance}, inner.window)); // it shows that
    QVERIFY(!TemplateCommands::makeChoice({inner.instance}, NodeLink(project.node(2))));
    const int steps = project.session.undoStack().count();
    QVERIFY(project.workspace.push(
        TemplateCommands::makeChoice({inner.instance, other.instance}, other.window)));
    QCOMPARE(instance->GetTemplate(), other.window.GetNode());
    QCOMPARE(project.session.undoStack().count(), steps + 1);
    project.session.undoStack().undo();
    QCOMPARE(instance->GetTemplate(), inner.window.GetNode());

    // A template that has an instance of another cannot be shown by that one.
    const TemplateMaker::Made outer = project.make({inner.instance.GetNodeId()}, nullptr, replace);
    const auto *nested = dynamic_cast<Nodes::widgetInstance *>(outer.instance.GetNode());
    QVERIFY(nested && nested->CanShow(*inner.window.GetNode()));
    auto own = project.session.project()->CreateDetached(*nested->GetKind());
    const NodeLink within(own.get());
    QVERIFY(inner.window.GetNode()->AddNode(own));
    QVERIFY(!TemplateCommands::makeChoice({within}, outer.window));
    QVERIFY(!TemplateCommands::makeChoice({within, outer.instance}, outer.window));
    project.workspace.selection().select({within, NodeLink(project.node(24))}, nullptr);
    QVERIFY(!TemplateCommands::canChoose(project.workspace));
    QVERIFY(TemplateCommands::canOpen(project.workspace));
}

void TestTemplateMaker::anInstanceIsEnteredByItsTemplate()
{
    Plant project;
    const TemplateMaker::Made made = project.make({20}, nullptr, TemplateMaker::Originals::Replace);
    Nodes::NodeLinks opened;
    QObject::connect(&project.workspace, &Workspace::openRequested, &project.host,
                     [&opened](const NodeLink &link) { opened.push_back(link); });
    QSignalSpy asked(&project.workspace, &Workspace::propertyRequested);
    TemplateCommands::enter(project.workspace, NodeLink(project.node(22))); // a label
    QVERIFY(opened.empty() && asked.isEmpty());
    TemplateCommands::enter(project.workspace, made.instance);
    QVERIFY(opened == Nodes::NodeLinks{made.window});
    QVERIFY(made.instance.GetNode()->SetPropertyText("template", "999"));
    TemplateCommands::enter(project.workspace, made.instance);
    QCOMPARE(opened.size(), 1U);
    QCOMPARE(asked.size(), 1);
    QCOMPARE(asked.front().front().toString(), QString("template"));
}

QTEST_MAIN(TestTemplateMaker)
#include "tst_template_maker.moc"
