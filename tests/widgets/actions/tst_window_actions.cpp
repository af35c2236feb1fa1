#include "support/FakeScreens.h"
#include "support/MessageBoxes.h"
#include "support/RuntimeProject.h"

#include "widgets/actions/qBasicAction.h"
#include "widgets/windows/WindowComposite.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/frames/FrameWindow.h"

#include "nodes/visual/windows/BasicComposition.h"

using namespace Widgets;

namespace {

constexpr const char *screens = R"(
<frame id="8" name="F1" display="1" windows="9"/><frame id="7" name="F2" display="2" windows="9"/>
<window id="9" name="Back" x="0" y="0" width="1920" height="1080"/>
<window id="10" name="Plain" x="30" y="40" width="200" height="100"/>
<window id="11" name="Framed" x="30" y="40" width="200" height="100" border="resizable"/>
<windowComposed id="12" name="Composed" width="100" height="90" composition="20"/>
<composition id="20" name="A"/><composition id="23" name="B"/>
<memorySignal id="30" name="S" writable="true"/><memorySignal id="31" name="R"/>
<actionShowWindow id="40" name="show" window="10"/>
<actionShowWindow id="41" name="show anywhere" window="10" open="anywhere"/>
<actionShowWindow id="42" name="show always" window="10" open="always"/>
<actionShowWindow id="43" name="show on 2" window="10" display="2"/>
<actionShowWindow id="44" name="point" window="10" position="point" x="5" y="6"/>
<actionShowWindow id="45" name="centre" window="10" position="center"/>
<actionShowWindow id="46" name="framed" window="11" display="2" position="point" x="70" y="80"/>
<actionShowWindow id="47" name="composed" window="12"/>
<actionShowWindow id="48" name="beyond" window="10" display="5"/>
<actionCloseWindow id="49" name="close on 7" window="10" display="7"/>
<actionCloseWindow id="50" name="close" window="10"/>
<actionCloseWindow id="51" name="close all" window="10" display="-1"/>
<actionCloseWindow id="52" name="close current" current="true"/>
<actionCloseWindow id="53" name="close on 1" window="10" display="1"/>
<actionCloseWindow id="54" name="close on 2" window="10" display="2"/>
<actionToggleWindow id="55" name="toggle" window="10" position="point" x="7" y="8"/>
<actionToggleWindow id="56" name="toggle framed" window="11" display="2"/>
<actionChangeComposition id="57" name="change" window="12" composition="23"/>
<actionWriteValue id="58" name="write" signal="30" value="3"/>
<actionWriteValue id="59" name="write read-only" signal="31" value="3"/>)";

constexpr const char *users = R"(
<station id="89" name="St"><authentication id="90" name="A"/></station><user id="91" name="U"/>)";

const QPoint second = FakeScreens::topLeft(1);

struct Screens : RuntimeProject
{
    explicit Screens(const char *more = "") : RuntimeProject((std::string(screens) + more).c_str())
    {
        manager->Start();
    }
    QWidget *window(unsigned long id) const { return manager->GetWindow(id); }
    QRect clientArea(unsigned long id) const { return areaOf(*window(id)); }
    static QRect areaOf(const QWidget &window)
    {
        return {window.mapToGlobal(QPoint(0, 0)), window.size()};
    }
};

} // namespace

class TestWindowActions : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FakeScreens::install(2); }
    void opensInPlace_data();
    void opensInPlace();
    void reusesOpenWindows_data();
    void reusesOpenWindows();
    void closes_data();
    void closes();
    void togglesAnOpenWindow_data();
    void togglesAnOpenWindow();
    void changingTheCompositionKeepsThePlace();
    void refusals_data();
    void refusals();
    void windowsLeaveAnUnpluggedDisplay(); // the last: the display stays away
};

void TestWindowActions::opensInPlace_data()
{
    QTest::addColumn<unsigned>("action");
    QTest::addColumn<unsigned>("window");
    QTest::addColumn<int>("triggeredOn");
    QTest::addColumn<QRect>("expected");
    const QRect own(30, 40, 200, 100);
    QTest::newRow("where triggered: 1") << 40u << 10u << 0 << own;
    QTest::newRow("where triggered: 2") << 40u << 10u << 1 << own.translated(second);
    QTest::newRow("display 2") << 43u << 10u << 0 << own.translated(second);
    QTest::newRow("point") << 44u << 10u << 1 << QRect(second + QPoint(5, 6), own.size());
    QTest::newRow("centre") << 45u << 10u << 1 << QRect(second + QPoint(860, 490), own.size());
    QTest::newRow("framed") << 46u << 11u << 0 << QRect(second + QPoint(70, 80), own.size());
    QTest::newRow("no such display") << 48u << 10u << 0 << own;
}

void TestWindowActions::opensInPlace()
{
    QFETCH(unsigned, action);
    QFETCH(unsigned, window);
    QFETCH(int, triggeredOn);
    QFETCH(QRect, expected);
    const Screens project;
    project.run(action, triggeredOn);
    const QWidget *opened = project.window(window);
    QVERIFY(opened && opened->isVisible());
    QCOMPARE(project.clientArea(window), expected);
    const bool isFramed = window == 11;
    QCOMPARE(qobject_cast<FrameWindow *>(opened->window()) != nullptr, isFramed);
    QCOMPARE(opened->window()->windowTitle(), QString(isFramed ? "Framed" : "Plain"));
    QCOMPARE(opened->testAttribute(Qt::WA_TranslucentBackground), !isFramed);
}

void TestWindowActions::reusesOpenWindows_data()
{
    QTest::addColumn<QVector<QPoint>>("pushes"); // action, display
    QTest::addColumn<int>("instances");
    QTest::newRow("same display") << QVector<QPoint>{{40, 0}, {40, 0}} << 1;
    QTest::newRow("another display") << QVector<QPoint>{{40, 0}, {40, 1}} << 2;
    QTest::newRow("anywhere") << QVector<QPoint>{{40, 0}, {41, 1}} << 1;
    QTest::newRow("always") << QVector<QPoint>{{40, 0}, {42, 0}} << 2;
}

void TestWindowActions::reusesOpenWindows()
{
    QFETCH(QVector<QPoint>, pushes);
    QFETCH(int, instances);
    const Screens project;
    for (const QPoint &push : pushes)
        project.run(unsigned(push.x()), push.y());
    QCOMPARE(project.openWindows(10), instances);
    project.window(10)->showMinimized();
    project.run(41);
    QVERIFY(!project.window(10)->isMinimized());
}

void TestWindowActions::closes_data()
{
    QTest::addColumn<unsigned>("action");
    QTest::addColumn<int>("active"); // screen of the active window, -1 for none
    QTest::addColumn<QList<int>>("left");
    QTest::newRow("everywhere") << 51u << -1 << QList<int>();
    QTest::newRow("display 1") << 53u << -1 << QList<int>{1, 1};
    QTest::newRow("display 2") << 54u << -1 << QList<int>{0};
    QTest::newRow("no such display") << 49u << -1 << QList<int>{0, 1, 1};
    QTest::newRow("display of the active window") << 50u << 1 << QList<int>{0};
    QTest::newRow("no window is active") << 50u << -1 << QList<int>{0, 1, 1};
    QTest::newRow("the active window") << 52u << 1 << QList<int>{0, 1};
}

void TestWindowActions::closes()
{
    QFETCH(unsigned, action);
    QFETCH(int, active);
    QFETCH(QList<int>, left);
    const Screens project;
    project.run(46);
    for (const int display : {0, 1, 1})
        project.run(42, display);
    QApplication::setActiveWindow(active < 0 ? nullptr : project.manager->GetWindow(10, active));
    project.run(action);
    QList<int> open;
    for (const WidgetLink &link : project.manager->windows()) {
        if (link.id == 10)
            open << ScreenNumber(link.widget);
    }
    QCOMPARE(open, left);
    QCOMPARE(project.openWindows(11), 1);
}

void TestWindowActions::togglesAnOpenWindow_data()
{
    QTest::addColumn<unsigned>("show");
    QTest::addColumn<unsigned>("toggle");
    QTest::addColumn<unsigned>("window");
    QTest::addColumn<QPoint>("expected");
    QTest::newRow("plain") << 40u << 55u << 10u << QPoint(7, 8);
    QTest::newRow("framed") << 46u << 56u << 11u << second + QPoint(30, 40);
}

void TestWindowActions::togglesAnOpenWindow()
{
    QFETCH(unsigned, show);
    QFETCH(unsigned, toggle);
    QFETCH(unsigned, window);
    QFETCH(QPoint, expected);
    const Screens project;
    project.run(toggle);
    QVERIFY(!project.window(window));
    project.run(show);
    project.run(toggle);
    QVERIFY(!project.window(window)->isVisible());
    project.run(toggle);
    QVERIFY(project.window(window)->isVisible());
    QCOMPARE(project.clientArea(window), QRect(expected, QSize(200, 100)));
    QCOMPARE(project.openWindows(window), 1);
}

void TestWindowActions::changingTheCompositionKeepsThePlace()
{
    const Screens project;
    project.run(47);
    auto *window = qobject_cast<WindowComposite *>(project.window(12));
    QVERIFY(window);
    window->move(321, 123);
    project.run(57);
    QCOMPARE(window->composition(), project.node<Nodes::BasicComposition>(23));
    QCOMPARE(window->pos(), QPoint(321, 123));
}

void TestWindowActions::refusals_data()
{
    QTest::addColumn<unsigned>("action");
    QTest::addColumn<bool>("withUsers");
    QTest::addColumn<QString>("message"); // its beginning; empty when refused silently
    const QString rights = "Ошибка: Недостаточно прав для выполнения действия";
    QTest::newRow("open without the right") << 40u << true << rights;
    QTest::newRow("write without the right") << 58u << true << rights;
    QTest::newRow("write a read-only signal") << 59u << false << "Ошибка: write read-only: ";
    QTest::newRow("close without the right") << 51u << true << QString();
    QTest::newRow("show again without the right") << 55u << true << rights;
}

void TestWindowActions::refusals()
{
    QFETCH(unsigned, action);
    QFETCH(bool, withUsers);
    QFETCH(QString, message);
    Screens project(withUsers ? users : "");
    project.core.SetWorkMode(Nodes::WorkModeEditing); // opens whatever the rights
    project.run(42);
    if (action == 55)
        project.run(action); // hides it
    project.core.SetWorkMode(Nodes::WorkModeRuntime);
    const MessageBoxes boxes;
    project.run(action);
    QCOMPARE(boxes.shown.size(), message.isEmpty() ? 0 : 1);
    QVERIFY(boxes.shown.join(QString()).startsWith(message));
    QCOMPARE(project.openWindows(10), 1);
    QVERIFY(project.value(30).IsEmpty());
}

void TestWindowActions::windowsLeaveAnUnpluggedDisplay()
{
    const Screens project;
    project.run(43);
    project.run(46);
    FakeScreens::remove(1);
    QTRY_COMPARE(project.clientArea(10), QRect(30, 40, 200, 100));
    QCOMPARE(project.clientArea(11), QRect(70, 80, 200, 100));
    project.run(43); // opens where the node says, on a display that exists
    QCOMPARE(project.openWindows(10), 2);
    QCOMPARE(Screens::areaOf(*project.manager->windows().last().widget), QRect(30, 40, 200, 100));
}

QTEST_MAIN(TestWindowActions)
#include "tst_window_actions.moc"
