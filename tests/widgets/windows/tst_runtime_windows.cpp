#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/windows/OpeningTimer.h"
#include "widgets/windows/WindowComposite.h"
#include "widgets/windows/WindowForm.h"
#include "widgets/windows/desktop/DesktopPlacement.h"
#include "widgets/windows/frames/FrameWindow.h"

#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicComposition.h"

using namespace Widgets;
using Nodes::BasicComposition;
using Nodes::BasicWindow;

namespace {

constexpr const char *screens = R"(
<window id="10" name="Form" x="30" y="40" width="200" height="100" border="resizable"
        closeButton="true" modality="application" onOpen="31" onClose="32">
  <label id="15" name="Live" signal="33" width="50" height="20"/>
  <label id="16" name="Fixed" text="t"/>
</window>
<windowComposed id="12" name="Composed" width="100" height="90" composition="20"/>
<composition id="20" name="A" keep="true"><layer id="21" name="L">
  <label id="22" name="A" signal="33"/></layer></composition>
<composition id="23" name="B"><layer id="24" name="L"><label id="25" name="B"/></layer></composition>
<memorySignal id="29" name="opened" writable="true"/>
<memorySignal id="30" name="closed" writable="true"/>
<actionWriteValue id="31" name="O" signal="29" value="1"/>
<actionWriteValue id="32" name="C" signal="30" value="1"/>
<memorySignal id="33" name="value"/>)";

constexpr const char *users = R"(<authentication id="90" name="A"/><user id="91" name="U"/>)";

bool isLive(const RuntimeProject &project, unsigned long element)
{
    return project.node(element)->GetState() == Nodes::NodeState::Running;
}

/// An element that keeps a dialog open from within its mouse event.
struct DialogOnPress : QObject
{
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::GraphicsSceneMousePress)
            return false;
        QEventLoop dialog;
        QTimer::singleShot(0, &dialog, meanwhile);
        QTimer::singleShot(30, &dialog, &QEventLoop::quit);
        dialog.exec();
        wasSceneThere = bool(scene);
        return true;
    }
    std::function<void()> meanwhile;
    QPointer<ProxyScene> scene;
    bool wasSceneThere = false;
};

} // namespace

class TestRuntimeWindows : public QObject
{
    Q_OBJECT

private slots:
    void withoutANodeItStaysEmpty()
    {
        const RuntimeProject project(screens);
        WindowForm window(nullptr, nullptr);
        window.show();
        window.onUpdateProperties();
        window.hide();
        QVERIFY(window.getStrTitle().isEmpty());
        QVERIFY(window.close());
    }

    void takesItsNodesProperties()
    {
        const RuntimeProject project(screens);
        auto *node = project.node<BasicWindow>(10);
        WindowForm window(node, nullptr);
        QCOMPARE(window.geometry(), QRect(30, 40, 200, 100));
        QCOMPARE(window.getStrTitle(), QStringLiteral("Form"));
        QCOMPARE(window.getModality(), Qt::ApplicationModal);
        QVERIFY(window.getTitleVisible() && window.getCloseBtnVisible() && !window.getFrameFlag());
        QVERIFY(window.windowFlags() & Qt::FramelessWindowHint);
        QVERIFY(window.viewport()->hasMouseTracking());
        window.move(500, 300); // stays unless the geometry is what changes
        QVERIFY(node->SetPropertyText("closeButton", "false").IsSuccess());
        QTRY_COMPARE(window.getTitleHeight(), 0);
        QCOMPARE(window.pos(), QPoint(500, 300));
        QVERIFY(node->SetPropertyText("width", "250").IsSuccess());
        QTRY_COMPARE(window.geometry(), QRect(30, 40, 250, 100));
    }

    void editingCentresInTheParent_data()
    {
        const Rows<QSize, QRect> row("parent", "expected");
        row("none", {}, {30, 40, 200, 100});
        row("larger", {400, 300}, {100, 100, 200, 100});
        row("no room above", {400, 110}, {100, 20, 200, 100});
        row("smaller", {100, 50}, {0, 20, 200, 100});
    }

    void editingCentresInTheParent()
    {
        QFETCH(QSize, parent);
        const RuntimeProject project(screens, Nodes::WorkModeEditing);
        QWidget holder;
        holder.resize(parent);
        const WindowForm window(project.node<BasicWindow>(10),
                                parent.isValid() ? &holder : nullptr);
        QTEST(window.geometry(), "expected");
        QVERIFY(window.getStrTitle().isEmpty() && !window.getTitleVisible());
    }

    // Minimizing runs no list, yet it switches the elements too.
    void everyShowAndHideRunsItsListAndSwitchesElements()
    {
        RuntimeProject project(screens);
        project.record({29, 30});
        WindowForm window(project.node<BasicWindow>(10), nullptr);
        for (int round = 0; round < 2; ++round) {
            window.show();
            QVERIFY(isLive(project, 15));
            window.showMinimized();
            QTRY_VERIFY(!isLive(project, 15));
            window.showNormal();
            QTRY_VERIFY(isLive(project, 15));
            window.hide();
            QVERIFY(!isLive(project, 15));
            QCOMPARE(project.ran(), QStringLiteral("opened closed"));
        }
    }

    void keptSceneComesBackAndDroppedOneGoes()
    {
        const RuntimeProject project(screens);
        WindowComposite window(project.node<BasicWindow>(12), nullptr);
        window.show();
        ProxyScene *kept = window.proxyScene();
        QVERIFY(isLive(project, 22));
        window.LoadComposition(project.node<BasicComposition>(23));
        const QPointer<ProxyScene> dropped = window.proxyScene();
        QVERIFY(dropped != kept);
        QVERIFY(!isLive(project, 22) && isLive(project, 25));
        QCOMPARE(window.composition(), project.node<BasicComposition>(23));
        window.LoadComposition(project.node<BasicComposition>(20));
        QCOMPARE(window.proxyScene(), kept);
        QVERIFY(isLive(project, 22));
        window.LoadComposition(nullptr);
        QCOMPARE(window.proxyScene(), kept);
        QTRY_VERIFY(!dropped);
    }

    void outlivesDeletedNodes_data()
    {
        const Rows<unsigned, unsigned> row("window", "deleted");
        row("window", 10u, 10u);
        row("composed window", 12u, 12u);
        row("composition", 12u, 20u);
        row("layer", 12u, 21u);
    }

    void outlivesDeletedNodes()
    {
        QFETCH(unsigned, window);
        QFETCH(unsigned, deleted);
        const RuntimeProject project((std::string(screens) + users).c_str());
        const std::unique_ptr<WindowBasic> shown(qobject_cast<WindowBasic *>(
            project.manager->createWindow(project.node(window)).widget));
        shown->setAttribute(Qt::WA_DeleteOnClose, false);
        shown->show();
        const ProxyScene *scene = shown->proxyScene();
        QVERIFY(project.node(deleted)->GetParent()->DeleteNode(deleted, true));
        shown->onUpdateProperties();
        shown->proxyScene()->updateGeometry();
        const QImage picture = shown->grab().toImage();
        QCOMPARE(shown->getNode() == nullptr, deleted == window);
        QCOMPARE(scene->getNode() == nullptr, deleted == 10 || deleted == 20);
        if (deleted == window) {
            QCOMPARE(picture.pixelColor(picture.rect().bottomRight()),
                     shown->palette().color(QPalette::Window));
            shown->hide();
            QVERIFY(shown->close()); // nobody can hold the right to close what is gone
        } else {
            auto &composite = dynamic_cast<WindowComposite &>(*shown);
            QCOMPARE(composite.composition() == nullptr, deleted == 20);
            composite.LoadComposition(project.node<BasicComposition>(23));
            QVERIFY(isLive(project, 25));
        }
    }

    void outlivesDialogsOfItsElements_data()
    {
        const Rows<unsigned, bool> row("window", "framed");
        row("closed", 10u, false);
        row("closed in its frame", 10u, true);
        row("composition changed", 12u, false);
    }

    // Meanwhile an action takes the window or its scene away.
    void outlivesDialogsOfItsElements()
    {
        QFETCH(unsigned, window);
        QFETCH(bool, framed);
        const RuntimeProject project(screens);
        auto *shown =
            qobject_cast<WindowBasic *>(project.manager->createWindow(project.node(window)).widget);
        if (framed)
            new FrameWindow(shown, nullptr);
        DesktopPlacement::present(*shown);
        if (auto *composite = qobject_cast<WindowComposite *>(shown))
            composite->LoadComposition(project.node<BasicComposition>(23));
        DialogOnPress element;
        element.scene = shown->proxyScene();
        element.meanwhile = [&] {
            if (auto *composite = qobject_cast<WindowComposite *>(shown))
                composite->LoadComposition(project.node<BasicComposition>(20));
            else
                QVERIFY(project.manager->closeWindow(window, shown));
        };
        for (ProxyWidget *host : shown->proxyScene()->getLayers().first()->getWidgets())
            host->installEventFilter(&element);
        QTest::mousePress(shown->viewport(), Qt::LeftButton, {}, QPoint(5, 5));
        QVERIFY(element.wasSceneThere);
        QTRY_VERIFY(!element.scene);
        QCOMPARE(project.openWindows(window), window == 12 ? 1 : 0);
    }

    void openingIsMeasured()
    {
        const RuntimeProject project(screens);
        WindowForm window(project.node<BasicWindow>(10), nullptr);
        OpeningTimer *timer = OpeningTimer::restart(window, OpeningTimer::Clock::now());
        QSignalSpy painted(timer, &OpeningTimer::painted);
        QSignalSpy live(timer, &OpeningTimer::valuesLive);
        window.show();
        QTRY_COMPARE(painted.size(), 1);
        QVERIFY(live.isEmpty());
        project.node<Nodes::BasicSignal>(33)->GetCell()->Publish(1.5);
        QTRY_COMPARE(live.size(), 1);
        QCOMPARE(live.first()[1].toInt(), 0);
        QVERIFY(live.first()[0].toLongLong() >= painted.first()[0].toLongLong());
    }
};

QTEST_MAIN(TestRuntimeWindows)
#include "tst_runtime_windows.moc"
