#include "support/Mouse.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/context/ActionSink.h"
#include "widgets/context/OwedActions.h"
#include "widgets/elements/IWidget.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"

#include "nodes/visual/BasicWidget.h"

#include <QUndoStack>

using namespace Widgets;
using Nodes::WorkModeEditing;
using Nodes::WorkModeRuntime;

namespace {

constexpr const char *nodes = R"(
<memorySignal id="10" name="On" type="bool" writable="true"/>
<memorySignal id="11" name="Pressed" writable="true"/>
<actionWriteValue id="12" name="press" signal="11" value="1"/>
<window id="20" name="W" width="400" height="300">
  <checkBox id="21" name="C" x="10" y="10" width="100" height="30" signal="10"/>
  <button id="22" name="B" x="10" y="60" width="100" height="30" pressActions="12"/>
  <multiLabel id="23" name="M" x="10" y="110" visibility="matching" signal="11"/></window>)";

/// How a scene is told what it is.
enum Told { Nothing, LookedAt, LookedAtAndBack, RunsHere, EditedHere };

struct Shown
{
    explicit Shown(Nodes::enWorkMode mode, Told told = Nothing)
        : project(nodes, mode), view(project.node(20), nullptr)
    {
        scene = view.setScene(project.node(20));
        Utils::IUndo::setUndoStack(&stack);
        project.publish(10, false);
        project.publish(11, 0.0);
        if (told == LookedAt || told == LookedAtAndBack)
            scene->setEditingMode(false);
        if (told == LookedAtAndBack)
            scene->setEditingMode(true);
        if (told == RunsHere || told == EditedHere)
            scene->setMode(told == RunsHere ? WorkModeRuntime : WorkModeEditing);
        view.resize(400, 300);
        view.show();
    }
    ~Shown() { Utils::IUndo::setUndoStack(nullptr); }

    ProxyWidget *host(unsigned long id) const
    {
        for (ProxyWidget *host : scene->getLayers().first()->getWidgets()) {
            if (host->getNodeLink().GetNodeId() == id)
                return host;
        }
        return nullptr;
    }
    void click(const QPoint &at) const
    {
        sendMouse(*view.viewport(), QEvent::MouseButtonPress, at);
        sendMouse(*view.viewport(), QEvent::MouseButtonRelease, at);
    }
    /// By 30 pixels to the right.
    void drag(const QPoint &from, QEvent::Type press) const
    {
        sendMouse(*view.viewport(), press, from);
        QMouseEvent move(QEvent::MouseMove, from + QPoint(30, 0),
                         view.viewport()->mapToGlobal(from + QPoint(30, 0)), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(view.viewport(), &move);
        sendMouse(*view.viewport(), QEvent::MouseButtonRelease, from + QPoint(30, 0));
    }

    RuntimeProject project;
    QUndoStack stack;
    ProxyView view;
    ProxyScene *scene;
};

/// A preview's own: lets nothing through.
class Notes : public ActionSink
{
public:
    ActionTrigger triggerAt(const QWidget *, const std::optional<QPoint> &,
                            ActionOrigin origin) const override
    {
        ActionTrigger trigger;
        trigger.origin = origin;
        return trigger;
    }
    void push(const Nodes::NodeLinks &actions, const ActionTrigger &) override
    {
        for (const Nodes::NodeLink &link : actions)
            told << QString::fromStdString(link.GetNode()->GetName());
    }
    std::unique_ptr<OwedActions> owe(const Nodes::NodeLinks &, const ActionTrigger &) override
    {
        return nullptr;
    }
    Nodes::Result write(const Nodes::BasicWidget &element,
                        const std::function<Nodes::Result()> &) override
    {
        told << "write " + QString::fromStdString(element.GetName());
        return Nodes::Result::ReadOnly;
    }
    void warn(const QString &) override { told << "warn"; }
    void notify(const QString &) override { told << "notify"; }
    void journalOnce(const Nodes::ConfigNode &, const std::string &) override { told << "journal"; }

    QStringList told;
};

} // namespace

Q_DECLARE_METATYPE(Told)
Q_DECLARE_METATYPE(Nodes::enWorkMode)

class SceneContextTest : public QObject
{
    Q_OBJECT

private slots:
    void theSceneDecides_data()
    {
        const Rows<Nodes::enWorkMode, Told, bool, bool, bool> row("process", "told", "isEdited",
                                                                  "isLive", "looksLive");
        row("editor", WorkModeEditing, Nothing, true, false, false);
        row("preview to look at", WorkModeEditing, LookedAt, false, false, true);
        row("edited again", WorkModeEditing, LookedAtAndBack, true, false, false);
        row("preview that runs", WorkModeEditing, RunsHere, false, true, true);
        row("station", WorkModeRuntime, Nothing, false, true, true);
        row("looked at on a station", WorkModeRuntime, LookedAt, false, false, true);
        row("edited on a station", WorkModeRuntime, EditedHere, true, false, false);
    }

    void theSceneDecides()
    {
        QFETCH(Nodes::enWorkMode, process);
        QFETCH(Told, told);
        QFETCH(bool, isEdited);
        QFETCH(bool, isLive);
        QFETCH(bool, looksLive);
        Shown shown(process, told);
        QCOMPARE(shown.scene->isEditing(), isEdited);
        QCOMPARE(shown.host(21)->locker() != nullptr, isEdited);
        QCOMPARE(shown.view.dragMode() == QGraphicsView::RubberBandDrag, isEdited);
        QTRY_COMPARE(shown.host(23)->widget()->isHidden(), looksLive);
        int x = 10;
        for (const QEvent::Type press : {QEvent::MouseButtonDblClick, QEvent::MouseButtonPress}) {
            shown.drag({75, 25}, press);
            x += isEdited ? 30 : 0;
            QCOMPARE(shown.project.node<Nodes::BasicWidget>(21)->GetPosition().x, x);
        }
        QCOMPARE(shown.stack.count(), isEdited ? 2 : 0);
        shown.host(21)->setFocus();
        QTest::keyClick(&shown.view, Qt::Key_Space); // on, which the click takes back
        shown.click({105, 25});
        QCOMPARE(shown.project.value(10).ToDouble(), 0.0);
        shown.click({105, 25});
        QCOMPARE(shown.project.value(10).ToDouble(), isLive ? 1.0 : 0.0);
        shown.click({60, 75});
        (void)shown.project.ran();
        QCOMPARE(shown.project.value(11).ToDouble(), isLive ? 1.0 : 0.0);
    }

    void whatAPreviewAsksForGoesToItsSink()
    {
        const Shown shown(WorkModeEditing);
        const auto notes = std::make_shared<Notes>();
        SceneContext context;
        context.setMode(WorkModeRuntime);
        context.setActions(notes);
        shown.scene->setContext(context);
        shown.click({60, 25});
        shown.click({60, 75});
        QCOMPARE(notes->told, QStringList({"write C", "warn", "press"}));
        QCOMPARE(shown.project.manager->queuedActions(), 0);
        QCOMPARE(shown.project.value(10).ToDouble(), 0.0);
    }

    void followsTheCoreUnlessTold()
    {
        Shown shown(WorkModeRuntime);
        const IWidget &element = *shown.host(21)->element();
        QVERIFY(element.isRuntime() && !shown.scene->isEditing());
        shown.project.core.SetWorkMode(WorkModeEditing);
        QVERIFY(element.isEditor() && shown.scene->isEditing());
        shown.scene->setMode(WorkModeRuntime);
        QVERIFY(!shown.scene->isEditing());
        QVERIFY(SceneContext::process()->isEditor());
        shown.scene->setMode(std::nullopt);
        shown.project.manager.reset();
        QCOMPARE(shown.scene->context().mode(), Nodes::WorkModeNone);
    }
};

QTEST_MAIN(SceneContextTest)
#include "tst_scene_context.moc"
