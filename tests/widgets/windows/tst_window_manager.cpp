#include "support/FakeScreens.h"
#include "support/RuntimeProject.h"

#include "widgets/windows/frames/FrameWidget.h"
#include "widgets/windows/frames/FrameWindow.h"

#include "nodes/timers/operationTimer.h"

#include <thread>

using namespace Widgets;

namespace {

constexpr const char *screens = R"(
<window id="10" name="Form" x="30" y="40" width="200" height="100"/>
<window id="11" name="Right" x="230" y="20" width="50" height="60"/>
<windowComposed id="12" name="Composed" width="100" height="100" composition="13"/>
<composition id="13" name="C"><layer id="14" name="L"><label id="15" name="A"/></layer></composition>
<frame id="20" name="Main" display="1" windows="10 11"/>
<frame id="21" name="Empty" display="2"/>
<frame id="22" name="Beyond" display="9" windows="10" border="decorated"/>
<memorySignal id="30" name="S" type="int" writable="true"/>
<actionWriteValue id="31" name="W" signal="30" value="7"/>
<operationTimer id="32" name="T" interval="100" actions="31"/>)";

} // namespace

class TestWindowManager : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FakeScreens::install(2); }
    void worksWithoutACore();
    void createsWhatTheNodeIs_data();
    void createsWhatTheNodeIs();
    void sameNodeOpensTwiceAndIsForgotten();
    void placesFramesOnTheirDisplays();
    void withoutTheRightItStaysOpen();
    void altZMinimizesAndPassesOn_data();
    void altZMinimizesAndPassesOn();
    void nodeThreadsRunActions();
    void finishedCoreEndsTheApplication_data();
    void finishedCoreEndsTheApplication();
};

void TestWindowManager::worksWithoutACore()
{
    QVERIFY(!g_pWindowManager);
    WindowManager manager(nullptr);
    QCOMPARE(g_pWindowManager, &manager);
    QCOMPARE(WindowManager::GetWorkMode(), Nodes::WorkModeNone);
    QVERIFY(!manager.getSystemAlarming() && !manager.getSystemVisualization());
    manager.Start();
    QCOMPARE(manager.createWindow(nullptr), WidgetLink());
    QVERIFY(manager.PushAction(nullptr).IsSuccess());
    QVERIFY(!manager.closeWindow(1, nullptr));
}

void TestWindowManager::createsWhatTheNodeIs_data()
{
    QTest::addColumn<unsigned>("node");
    QTest::addColumn<QByteArray>("className");
    QTest::newRow("window") << 10u << QByteArray("Widgets::WindowForm");
    QTest::newRow("composed window") << 12u << QByteArray("Widgets::WindowComposite");
    QTest::newRow("composition") << 13u << QByteArray("Widgets::ProxyView");
    QTest::newRow("layer") << 14u << QByteArray("Widgets::ProxyView");
    QTest::newRow("element") << 15u << QByteArray();
    QTest::newRow("frame") << 20u << QByteArray();
}

void TestWindowManager::createsWhatTheNodeIs()
{
    QFETCH(unsigned, node);
    QFETCH(QByteArray, className);
    const RuntimeProject project(screens);
    const WidgetLink link = project.manager->createWindow(project.node(node));
    QCOMPARE(link == WidgetLink(), className.isEmpty());
    QCOMPARE(project.manager->windows().size(), className.isEmpty() ? 0 : 1);
    if (link.widget)
        QCOMPARE(QByteArray(link.widget->metaObject()->className()), className);
}

void TestWindowManager::sameNodeOpensTwiceAndIsForgotten()
{
    const RuntimeProject project(screens);
    const WidgetLink first = project.manager->createWindow(project.node(10));
    const WidgetLink second = project.manager->createWindow(project.node(10));
    QVERIFY(first != second);
    QCOMPARE(project.manager->GetWindow(10), first.widget);
    QVERIFY(project.manager->closeWindow(10, first.widget));
    QVERIFY(!project.manager->closeWindow(10, first.widget));
    QCOMPARE(project.manager->GetWindow(10), second.widget);
    second.widget->show();
    second.widget->close(); // past the manager
    QVERIFY(project.manager->windows().isEmpty());
    delete project.manager->createWindow(project.node(10)).widget;
    QVERIFY(project.manager->windows().isEmpty());
}

void TestWindowManager::placesFramesOnTheirDisplays()
{
    const RuntimeProject project(screens);
    project.manager->Start();
    QWidget *main = project.manager->getFrame(0);
    QVERIFY(main && main->isVisible());
    QCOMPARE(main->geometry(), QRect(30, 20, 250, 120));
    QCOMPARE(main->maximumSize(), QSize(250, 120));
    const auto windows = project.manager->windows();
    QCOMPARE(windows[0].widget->geometry(), QRect(0, 20, 200, 100));
    QCOMPARE(windows[1].widget->geometry(), QRect(200, 0, 50, 60));
    QWidget *decorated = windows[2].widget->window();
    QVERIFY(qobject_cast<FrameWindow *>(decorated));
    QCOMPARE(decorated->pos(), QPoint(30, 40));
    const auto topLevel = QApplication::topLevelWidgets();
    const auto empty = std::find_if(topLevel.begin(), topLevel.end(), [](const QWidget *widget) {
        return widget->windowTitle() == "Empty";
    });
    QVERIFY(empty != topLevel.end());
    QCOMPARE((*empty)->maximumSize(), QSize(0, 0));
    QCOMPARE((*empty)->pos(), FakeScreens::topLeft(1));
}

void TestWindowManager::withoutTheRightItStaysOpen()
{
    const std::string users =
        std::string(screens) + R"(<authentication id="90" name="A"/><user id="91" name="U"/>)";
    const RuntimeProject project(users.c_str());
    QWidget *window = project.manager->createWindow(project.node(10)).widget;
    window->show();
    QVERIFY(!window->close());
    QVERIFY(!project.manager->closeWindow(10, window));
    QVERIFY(window->isVisible() && project.openWindows(10) == 1);
    project.manager->Start();
    for (QWidget *frame : QApplication::topLevelWidgets()) {
        if (qobject_cast<FrameWidget *>(frame) || qobject_cast<FrameWindow *>(frame))
            QCOMPARE(frame->close(), frame->windowTitle() == "Empty");
    }
}

void TestWindowManager::altZMinimizesAndPassesOn_data()
{
    QTest::addColumn<bool>("minimizes");
    QTest::newRow("Alt+Z") << true;
    QTest::newRow("Alt+Я") << true; // the same key of the Russian layout
    QTest::newRow("Alt+Shift+Z") << false;
    QTest::newRow("Z") << false;
    QTest::newRow("Alt+X") << false;
}

void TestWindowManager::altZMinimizesAndPassesOn()
{
    QFETCH(bool, minimizes);
    const int key = QKeySequence(QTest::currentDataTag())[0];
    struct Target : QWidget
    {
        void keyPressEvent(QKeyEvent *event) override { pressed = event->key(); }
        int pressed = 0;
    } target, other;
    const WindowManager manager(nullptr);
    target.show();
    other.show();
    const int plain = key & ~Qt::KeyboardModifierMask;
    QKeyEvent press(QEvent::KeyPress, plain, Qt::KeyboardModifiers(key - plain));
    QApplication::sendEvent(&target, &press);
    QCOMPARE(target.pressed, plain);
    QCOMPARE(target.isMinimized(), minimizes);
    QCOMPARE(other.isMinimized(), minimizes);
}

void TestWindowManager::nodeThreadsRunActions()
{
    RuntimeProject project(screens);
    std::thread([&] { project.core.RequestAction(project.node<Nodes::BasicAction>(31)); }).join();
    QTRY_COMPARE(project.value(30).ToInt(), 7);
    project.node<Nodes::BasicSignal>(30)->GetCell()->Publish(0);
    QVERIFY(project.node(32)->Start().IsSuccess());
    QTRY_COMPARE(project.value(30).ToInt(), 7);
    project.node(32)->Stop();
}

void TestWindowManager::finishedCoreEndsTheApplication_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("runtime") << int(Nodes::WorkModeRuntime) << 0;
    QTest::newRow("editing") << int(Nodes::WorkModeEditing) << 99;
}

void TestWindowManager::finishedCoreEndsTheApplication()
{
    QFETCH(int, mode);
    QFETCH(int, exitCode);
    RuntimeProject project(screens, Nodes::enWorkMode(mode));
    QTimer::singleShot(0, this, [&] { project.core.SetState(Nodes::NodeState::Finished); });
    QTimer::singleShot(exitCode == 0 ? 5000 : 200, project.manager.get(),
                       [] { QCoreApplication::exit(99); });
    QCOMPARE(QCoreApplication::exec(), exitCode);
}

QTEST_MAIN(TestWindowManager)
#include "tst_window_manager.moc"
