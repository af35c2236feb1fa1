#include "support/FakeScreens.h"
#include "support/RuntimeProject.h"

#include "widgets/actions/ActionManager.h"
#include "widgets/windows/WindowForm.h"

using namespace Widgets;

namespace {

// Every gesture list writes a signal named after it; the element's begin with "e".
std::string gestureProject()
{
    std::string nodes;
    std::string lists[2];
    int id = 100;
    for (const std::string owner : {"", "e"}) {
        for (const std::string gesture : {"Press", "Release", "Enter", "Move", "Leave"}) {
            const std::string signal = std::to_string(id), action = std::to_string(id + 50);
            nodes += "<memorySignal id=\"" + signal + "\" name=\"" + owner + gesture +
                     "\" writable=\"true\"/><actionWriteValue id=\"" + action + "\" name=\"W" +
                     action + "\" signal=\"" + signal + "\" value=\"1\"/>";
            lists[owner.empty() ? 0 : 1] += " on" + gesture + "=\"" + action + "\"";
            ++id;
        }
    }
    return nodes + R"(<window id="10" name="W" width="200" height="100")" + lists[0] +
           R"(><label id="15" name="E" text="e" x="100" y="0" width="100" height="100")" +
           lists[1] + "/></window>";
}

struct Step
{
    enum Target { Window, Viewport };
    QEvent::Type type;
    Target target = Viewport;
    QPoint position{20, 20};
    Qt::MouseButton button = Qt::LeftButton;
};

const QPoint onElement(150, 50);

} // namespace

Q_DECLARE_METATYPE(QVector<Step>)

class TestActionManager : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void gesturesRunTheirLists_data();
    void gesturesRunTheirLists();
    void actionsLearnTheirDisplay();
    void menusOpenAtTheTrigger();
    void editingRunsNothing();
    void withoutAWindowManagerNothingIsKept();

private:
    static void send(WindowForm &window, const Step &step, ulong timestamp);
};

void TestActionManager::initTestCase()
{
    FakeScreens::install(2);
}

void TestActionManager::send(WindowForm &window, const Step &step, ulong timestamp)
{
    QWidget *target =
        step.target == Step::Window ? static_cast<QWidget *>(&window) : window.viewport();
    if (step.type == QEvent::Enter || step.type == QEvent::Leave) {
        QEvent event(step.type);
        QCoreApplication::sendEvent(target, &event);
        return;
    }
    const bool isMove = step.type == QEvent::MouseMove;
    const bool isRelease = step.type == QEvent::MouseButtonRelease;
    QMouseEvent event(step.type, step.position, target->mapToGlobal(step.position),
                      isMove ? Qt::NoButton : step.button,
                      isMove || isRelease ? Qt::NoButton : step.button, Qt::NoModifier);
    event.setTimestamp(timestamp);
    QCoreApplication::sendEvent(target, &event);
}

void TestActionManager::gesturesRunTheirLists_data()
{
    QTest::addColumn<QVector<Step>>("steps");
    QTest::addColumn<QStringList>("expected");
    const Step press{QEvent::MouseButtonPress}, release{QEvent::MouseButtonRelease};
    const Step twice{QEvent::MouseButtonDblClick};
    const Step right{QEvent::MouseButtonPress, Step::Viewport, {20, 20}, Qt::RightButton};
    QTest::newRow("click") << QVector<Step>{press, release} << QStringList{"Press", "Release"};
    QTest::newRow("right button") << QVector<Step>{right} << QStringList();
    QTest::newRow("double click") << QVector<Step>{press, release, twice, release}
                                  << QStringList{"Press", "Release", "Release"};
    QTest::newRow("on the window itself")
        << QVector<Step>{{QEvent::MouseButtonPress, Step::Window}} << QStringList{"Press"};
    QTest::newRow("enter and leave")
        << QVector<Step>{{QEvent::Enter, Step::Window}, {QEvent::Leave, Step::Window}}
        << QStringList{"Enter", "Leave"};
    QTest::newRow("child entered and left")
        << QVector<Step>{{QEvent::Enter, Step::Viewport}, {QEvent::Leave, Step::Viewport}}
        << QStringList();
    QTest::newRow("move") << QVector<Step>{{QEvent::MouseMove}} << QStringList{"Move"};
    QTest::newRow("click on the element")
        << QVector<Step>{{QEvent::MouseButtonPress, Step::Viewport, onElement},
                         {QEvent::MouseButtonRelease, Step::Viewport, onElement}}
        << QStringList{"Press", "eEnter", "eMove", "ePress", "Release", "eRelease", "eMove"};
    QTest::newRow("double click on the element")
        << QVector<Step>{{QEvent::MouseButtonPress, Step::Viewport, onElement},
                         {QEvent::MouseButtonRelease, Step::Viewport, onElement},
                         {QEvent::MouseButtonDblClick, Step::Viewport, onElement},
                         {QEvent::MouseButtonRelease, Step::Viewport, onElement}}
        << QStringList{"Press",    "eEnter", "eMove",   "ePress",   "Release",
                       "eRelease", "eMove",  "Release", "eRelease", "eMove"};
    QTest::newRow("right button on the element")
        << QVector<Step>{{QEvent::MouseButtonPress, Step::Viewport, onElement, Qt::RightButton}}
        << QStringList{"eEnter", "eMove"};
    QTest::newRow("across the element")
        << QVector<Step>{{QEvent::MouseMove, Step::Viewport, onElement},
                         {QEvent::MouseMove, Step::Viewport, {20, 20}}}
        << QStringList{"Move", "eEnter", "eMove", "Move", "eLeave"};
}

void TestActionManager::gesturesRunTheirLists()
{
    QFETCH(QVector<Step>, steps);
    QFETCH(QStringList, expected);
    RuntimeProject project(gestureProject().c_str());
    WindowForm window(project.node<Nodes::BasicWindow>(10), nullptr);
    window.show();
    project.record({100, 101, 102, 103, 104, 105, 106, 107, 108, 109});
    ulong timestamp = 1000;
    for (const Step &step : steps)
        send(window, step, ++timestamp);
    // Actions run in order: once this one has run, so have all before it.
    project.push(159);
    expected << "eLeave";
    QTRY_VERIFY(project.recorded.endsWith("eLeave") && !project.value(109).IsEmpty());
    QCOMPARE(project.recorded.join(' '), expected.join(' '));
}

void TestActionManager::actionsLearnTheirDisplay()
{
    RuntimeProject project(gestureProject().c_str());
    WindowForm window(project.node<Nodes::BasicWindow>(10), nullptr);
    window.move(FakeScreens::topLeft(1) + QPoint(50, 50));
    window.show();
    send(window, {QEvent::MouseButtonPress}, 1);
    QCOMPARE(project.node<Nodes::BasicAction>(150)->currentDisplay(), 1);
    send(window, {QEvent::MouseButtonPress, Step::Viewport, onElement}, 2);
    QCOMPARE(project.node<Nodes::BasicAction>(155)->currentDisplay(), 1);
}

void TestActionManager::menusOpenAtTheTrigger()
{
    RuntimeProject project(R"(<actionShowMenu id="20" name="At" atTrigger="true" x="7" y="8"/>
<actionShowMenu id="21" name="Fixed" x="7" y="8"/>
<window id="10" name="W" width="200" height="100" onPress="20">
  <label id="15" name="E" text="e" x="100" y="10" width="100" height="60" onPress="20 21"/></window>)");
    WindowForm window(project.node<Nodes::BasicWindow>(10), nullptr);
    window.show();
    const auto trigger = [&](unsigned long id) {
        const auto &point = project.node<Nodes::BasicAction>(id)->triggerPoint();
        return point ? QPoint(point->x, point->y) : QPoint(-1, -1);
    };
    send(window, {QEvent::MouseButtonPress}, 1);
    QCOMPARE(trigger(20), window.viewport()->mapToGlobal(QPoint(20, 20)));
    send(window, {QEvent::MouseButtonPress, Step::Viewport, onElement}, 2);
    QCOMPARE(trigger(20), window.viewport()->mapToGlobal(QPoint(100, 70)));
    QCOMPARE(trigger(21), QPoint(-1, -1));
}

void TestActionManager::editingRunsNothing()
{
    RuntimeProject project(gestureProject().c_str(), Nodes::WorkModeEditing);
    WindowForm window(project.node<Nodes::BasicWindow>(10), nullptr);
    window.show();
    project.record({100, 109});
    send(window, {QEvent::MouseButtonPress}, 1);
    project.push(159);
    QTRY_COMPARE(project.recorded, QStringList("eLeave"));
}

void TestActionManager::withoutAWindowManagerNothingIsKept()
{
    Nodes::NodeLinks actions{Nodes::NodeLink(150)};
    ActionManager::getInstance().appendActions(actions);
    RuntimeProject project(gestureProject().c_str());
    project.record({100, 101});
    ActionManager::getInstance().appendActions({Nodes::NodeLink(151)});
    QTRY_COMPARE(project.recorded, QStringList("Release"));
}

QTEST_MAIN(TestActionManager)
#include "tst_action_manager.moc"
