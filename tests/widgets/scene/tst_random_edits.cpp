// Random edits as an engineer makes them, undone to the text of the project they began with and
// done again to the one they ended with. A failure names its seed; STATION_TEST_SEED=n repeats it.
#include "support/Rows.h"
#include "support/ShownEditor.h"

#include "nodes/model/KindInfo.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/model/properties/PropertyDescriptor.h"
#include "nodes/serial/ProjectWriter.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/MoveNodesCommand.h"
#include "utils/undo/RemoveNodeLinkGroup.h"
#include "utils/undo/ReplaceLinksCommand.h"
#include "widgets/scene/editing/DroppedProperties.h"
#include "widgets/scene/editing/arrange/SceneEditTable.h"

#include <QGraphicsSceneDragDropEvent>

#include <random>

using Widgets::ProxyWidget;

namespace {

constexpr const char *nodes = R"(
<folder id="10" name="S"><memorySignal id="11" name="T"/><memorySignal id="12" name="P"/></folder>
<compositionTemplate id="20" name="V" width="120" height="80">
  <templateParameter id="21" name="what"/>
  <layer id="22" name="low"><label id="23" name="A" width="60" height="30" signal="21"/>
    <button id="24" name="B" x="10" y="40" width="60" height="30"/></layer>
</compositionTemplate>
<composition id="30" name="C" width="640" height="480">
  <layer id="31" name="low" zOrder="1">
    <label id="32" name="A" x="10" y="20" width="100" height="30" signal="11"/>
    <button id="33" name="B" x="200" y="80" width="80" height="30"/>
    <label id="34" name="F" x="20" y="200" width="60" height="30" movable="false"/></layer>
  <layer id="36" name="top" zOrder="2" mode="transparent">
    <label id="37" name="G" x="300" y="200" width="90" height="30" signal="12"/></layer>
</composition>)";

constexpr int editCount = 1000;
constexpr int elementsAtMost = 40;

/// Makes random edits through the scene, or where it has none for it, by a command.
class Engineer
{
public:
    Engineer(ShownEditor &edited, unsigned seed) : m_edited(edited), m_random(seed) {}

    void edit()
    {
        using Edit = void (Engineer::*)();
        const Edit edits[] = {&Engineer::move,     &Engineer::resize,   &Engineer::add,
                              &Engineer::remove,   &Engineer::paste,    &Engineer::setProperty,
                              &Engineer::order,    &Engineer::rename,   &Engineer::reparent,
                              &Engineer::undoSome, &Engineer::dragSome, &Engineer::bind,
                              &Engineer::arrange,  &Engineer::arrange,  &Engineer::replaceLinks,
                              &Engineer::setAny,   &Engineer::setAny,   &Engineer::editTemplate,
                              &Engineer::add,      &Engineer::addUse,   &Engineer::removeSignal,
                              &Engineer::settle};
        (this->*edits[below(int(std::size(edits)))])();
    }

private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }

    QList<ProxyWidget *> all() const
    {
        QList<ProxyWidget *> hosts;
        for (const Widgets::ProxyLayer *layer : m_edited.scene->getLayers())
            hosts += layer->getWidgets();
        return hosts;
    }
    /// Null where there are no elements.
    ProxyWidget *any()
    {
        const QList<ProxyWidget *> hosts = all();
        return hosts.isEmpty() ? nullptr : hosts[below(hosts.size())];
    }
    void selectSome()
    {
        QList<ProxyWidget *> picked;
        for (int i = 0; i <= below(3); ++i) {
            if (ProxyWidget *host = any())
                picked << host;
        }
        m_edited.editor().selection().select(picked);
    }

    void move()
    {
        selectSome();
        const int keys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};
        m_edited.key(keys[below(4)], {}, 1 + below(20));
    }
    void resize()
    {
        selectSome();
        const int keys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};
        m_edited.key(keys[below(4)], Qt::ShiftModifier, 1 + below(20));
    }
    void dragSome()
    {
        selectSome();
        if (ProxyWidget *host = m_edited.editor().selection().key()) {
            const auto corner = Widgets::Corner(below(9) - 1);
            const QPointF to(below(60) - 30, below(60) - 30);
            m_edited.scene->drag({host, corner, {}, to});
            m_edited.scene->onMoveFinished();
        }
    }
    void add()
    {
        const char *kinds[] = {"label", "button", "symbol"};
        const char *kind = kinds[below(3)];
        const auto data = draggedTexts("application/nodetype", {kind, kinds[below(2)]});
        if (kind == kinds[2])
            Widgets::DroppedProperties::put({{"source", ":/symbols/pump.svg"}, {"name", "Pump"}},
                                            *data);
        drop(*data);
    }
    /// An instance of the template.
    void addUse() { drop(*draggedTexts("application/nodelink", {"20"})); }
    void drop(const QMimeData &data)
    {
        if (all().size() >= elementsAtMost)
            return;
        QGraphicsSceneDragDropEvent drop(QEvent::GraphicsSceneDrop);
        drop.setMimeData(&data);
        drop.setScenePos(QPointF(below(640), below(480)));
        QApplication::sendEvent(m_edited.scene, &drop);
    }
    void remove()
    {
        selectSome();
        m_edited.scene->removeWidget();
    }
    void paste()
    {
        selectSome();
        m_edited.scene->onCopyToBuffer();
        if (all().size() < elementsAtMost)
            m_edited.scene->onPasteFromBuffer(QPointF(below(600), below(400)));
    }
    void setProperty()
    {
        ProxyWidget *host = any();
        if (!host)
            return;
        const Nodes::NodeLink link = host->getNodeLink();
        using Prop = Nodes::BasicWidget::Prop;
        if (below(2) == 0)
            m_edited.stack.push(new Utils::ChangePropertyCommand(link, Prop::ZOrder, below(9)));
        else
            m_edited.stack.push(
                new Utils::ChangePropertyCommand(link, Prop::Movable, below(2) == 0));
    }
    /// Any property of the element's kind that is a number, a flag or a text.
    void setAny()
    {
        if (const ProxyWidget *host = any())
            setAnyOf(*host->getNode());
    }
    void setAnyOf(const Nodes::ConfigNode &node)
    {
        const auto &properties = node.GetKind()->properties;
        const auto &property = properties[std::size_t(below(int(properties.size())))];
        boost::any value = property.binding.get(node);
        if (auto *number = boost::any_cast<int>(&value))
            *number += below(21) - 10;
        else if (auto *flag = boost::any_cast<bool>(&value))
            *flag = !*flag;
        else if (auto *real = boost::any_cast<double>(&value))
            *real += below(100);
        else if (auto *text = boost::any_cast<std::string>(&value))
            *text = below(3) ? "t" + std::to_string(below(5)) : std::string();
        else
            return;
        m_edited.stack.push(
            new Utils::ChangePropertyCommand(Nodes::NodeLink(&node), property.valueId, value));
    }
    /// What every instance of it shows.
    void editTemplate()
    {
        auto *layer = m_edited.project.node<Nodes::ConfigNode>(22);
        const int count = layer->GetNodeCount();
        const int at = below(count + 1);
        if (at < count)
            setAnyOf(*layer->Children()[std::size_t(at)]);
        else
            m_edited.stack.push(new Utils::MoveNodesCommand(
                {layer->Children().front()->GetNodeLink()}, Nodes::NodeLink(layer), {}));
        if (below(3) == 0)
            m_edited.stack.push(new Utils::ChangeTextCommand(
                Nodes::NodeLink(21ul), Utils::ChangeTextCommand::Name, "P" + std::to_string(at)));
    }
    /// With what leads there; only an undo brings it back.
    void removeSignal()
    {
        const Nodes::NodeLink signal(below(2) ? 11ul : 12ul);
        if (signal.isValid() && signal->GetParent() && below(8) == 0)
            m_edited.stack.push(new Utils::RemoveNodeLinkGroup(Nodes::NodeLink(10ul), {signal}));
    }
    /// What was put off is done, and what was dropped deleted.
    void settle() { QCoreApplication::processEvents(); }
    void order()
    {
        selectSome();
        m_edited.editor().edits().moveOrder(below(2) ? 1 : -1);
    }
    void rename()
    {
        if (const ProxyWidget *host = any())
            m_edited.stack.push(new Utils::ChangeTextCommand(host->getNodeLink(),
                                                             Utils::ChangeTextCommand::Name,
                                                             "N" + std::to_string(below(1000000))));
    }
    void reparent()
    {
        const ProxyWidget *host = any();
        const ProxyWidget *before = any();
        if (host && before)
            m_edited.stack.push(new Utils::MoveNodesCommand(
                {host->getNodeLink()}, Nodes::NodeLink(below(2) ? 31ul : 36ul),
                below(2) ? before->getNodeLink() : Nodes::NodeLink()));
    }
    void bind()
    {
        ProxyWidget *host = any();
        if (!host)
            return;
        const auto data = draggedTexts("application/nodelink", {below(2) ? "11" : "12"});
        for (const QEvent::Type type :
             {QEvent::GraphicsSceneDragEnter, QEvent::GraphicsSceneDrop}) {
            QGraphicsSceneDragDropEvent event(type);
            event.setMimeData(data.get());
            m_edited.scene->sendEvent(host, &event);
        }
    }
    /// Any edit of a whole selection that the menus offer for it.
    void arrange()
    {
        selectSome();
        const auto &rows = Widgets::SceneEditTable::rows();
        const Widgets::SceneEditRow &row = rows[std::size_t(below(int(rows.size())))];
        auto &edits = m_edited.editor().tableEdits();
        const bool isRoom = !row.addsElements || all().size() < elementsAtMost;
        if (isRoom && Widgets::SceneEditTable::isPossible(row, edits.edited()))
            edits.run(row);
    }
    /// Makes elements show another signal, or none.
    void replaceLinks()
    {
        std::vector<Utils::LinkReplacement> links;
        for (const ProxyWidget *host : all()) {
            const auto *node = host->getNode();
            if (node && node->GetSignalLink().isValid() && below(2))
                links.push_back(
                    {host->getNodeLink(), Nodes::BasicWidget::Prop::Signal, node->GetSignalLink(),
                     below(3) ? Nodes::NodeLink(below(2) ? 11ul : 12ul) : Nodes::NodeLink()});
        }
        m_edited.stack.push(new Utils::ReplaceLinksCommand(links));
    }
    void undoSome()
    {
        for (int i = below(4); i > 0; --i)
            m_edited.stack.undo();
        for (int i = below(3); i > 0; --i)
            m_edited.stack.redo();
    }

    ShownEditor &m_edited;
    std::mt19937 m_random;
};

} // namespace

class RandomEditsTest : public QObject
{
    Q_OBJECT

private:
    /// Empty when the scene shows every element where its node is.
    static QString difference(const ShownEditor &edited)
    {
        return difference(edited, *edited.scene);
    }

    static QString difference(const ShownEditor &edited, const Widgets::ProxyScene &scene)
    {
        for (const Widgets::ProxyLayer *layer : scene.getLayers()) {
            if (layer->getWidgets().size() != layer->getNode()->GetNodeCount())
                return QString("the layer shows %1 elements of %2")
                    .arg(layer->getWidgets().size())
                    .arg(layer->getNode()->GetNodeCount());
            for (const ProxyWidget *host : layer->getWidgets()) {
                const unsigned long id = host->getNodeLink().GetNodeId();
                if (host->geometry() != QRectF(edited.place(id)))
                    return QString("element %1 is at x %2, its node at %3")
                        .arg(id)
                        .arg(host->geometry().x())
                        .arg(edited.place(id).x());
            }
        }
        return {};
    }

    /// But for the last id that was given: none is given twice, also after an undo.
    static QString textOf(const Nodes::NodesCollection &project)
    {
        return QString::fromStdString(Nodes::ProjectWriter::ToText(project))
            .remove(QRegularExpression(" lastId=\"\\d+\""));
    }

    /// The first line of the project's text that is not as in `text`; empty when there is none.
    static QByteArray firstDifference(const Nodes::NodesCollection &project, const QString &text)
    {
        const QStringList now = textOf(project).split('\n');
        const QStringList expected = text.split('\n');
        for (int i = 0; i < qMax(now.size(), expected.size()); ++i) {
            if (now.value(i) != expected.value(i))
                return ("\n" + now.value(i) + "\ninstead of\n" + expected.value(i)).toUtf8();
        }
        return {};
    }

private slots:
    void areUndoneAndRedone_data()
    {
        const Rows<unsigned> row("seed");
        if (qEnvironmentVariableIsSet("STATION_TEST_SEED")) {
            row("given", qEnvironmentVariableIntValue("STATION_TEST_SEED"));
            return;
        }
        row("1", 1);
        row("2", 2);
        row("another each time", std::random_device()() % 1000000);
    }

    void areUndoneAndRedone()
    {
        QFETCH(unsigned, seed);
        const QByteArray named = "seed " + QByteArray::number(seed);
        ShownEditor edited(nodes);
        const Nodes::NodesCollection &project = *edited.project.core.GetNodesCollection();
        const QString before = textOf(project);
        Widgets::ProxyView second(edited.project.node(30), nullptr); // another window of the scene
        const Widgets::ProxyScene &other = *second.setScene(edited.project.node(30));
        Engineer engineer(edited, seed);
        for (int i = 0; i < editCount; ++i)
            engineer.edit();
        QVERIFY2(edited.stack.count() > editCount / 4, named);
        const QString after = textOf(project);
        QVERIFY2(before != after, named);
        // What is shown again settles with the event loop.
        QTRY_VERIFY2(difference(edited).isEmpty(), named + ": " + difference(edited).toUtf8());
        QTRY_COMPARE(difference(edited, other), QString());
        const int last = edited.stack.index();
        while (edited.stack.canUndo())
            edited.stack.undo();
        QCOMPARE(named + firstDifference(project, before), named);
        QTRY_VERIFY2(difference(edited).isEmpty(), named + ": " + difference(edited).toUtf8());
        QTRY_COMPARE(difference(edited, other), QString());
        while (edited.stack.index() < last)
            edited.stack.redo();
        QCOMPARE(named + firstDifference(project, after), named);
        QTRY_VERIFY2(difference(edited).isEmpty(), named + ": " + difference(edited).toUtf8());
        QTRY_COMPARE(difference(edited, other), QString());
    }
};

QTEST_MAIN(RandomEditsTest)
#include "tst_random_edits.moc"
