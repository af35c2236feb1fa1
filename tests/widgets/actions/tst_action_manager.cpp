#include "support/FakeScreens.h"
#include "support/Mouse.h"
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
    QEvent::Type type;
    bool isOnElement = false;
    Qt::MouseButton button = Qt::LeftButton;
};

constexpr Step press{QEvent::MouseButtonPress}, release{QEvent::MouseButtonRelease},
    twice{QEvent::MouseButtonDblClick}, move{QEvent::MouseMove}, enter{QEvent::Enter},
    leave{QEvent::Leave};
constexpr Step elementPress{QEvent::MouseButtonPress, true},
    elementRelease{QEvent::MouseButtonRelease, true},
    elementTwice{QEvent::MouseButtonDblClick, true}, elementMove{QEvent::MouseMove, true};

void send(QWidget *target, const Step &step)
{
    if (step.type == QEvent::Enter || step.type == QEvent::Leave) {
        QEvent event(step.type);
        QCoreApplication::sendEvent(target, &event);
        return;
    }
    sendMouse(*target, step.type, step.isOnElement ? QPoint(150, 50) : QPoint(20, 20),
              step.type == QEvent::MouseMove ? Qt::NoButton : step.button);
}

} // namespace

Q_DECLARE_METATYPE(QVector<Step>)

class TestActionManager : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { FakeScreens::install(2); }
    void gesturesRunTheirLists_data();
    void gesturesRunTheirLists();
    void actionsLearnTheirDisplay();
    void menusOpenAtTheTrigger();
    void editingRunsNothing();
    void withoutAWindowManagerNothingIsKept();
};

void TestActionManager::gesturesRunTheirLists_data()
{
    QTest::addColumn<QVector<Step>>("steps");
    QTest::addColumn<bool>("onWindow"); // and not on its viewport
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QVector<Step> &steps, const char *expected,
                        bool onWindow = false) {
        QTest::newRow(name) << steps << onWindow << QString(expected);
    };
    const Step right{QEvent::MouseButtonPress, false, Qt::RightButton};
    const Step elementRight{QEvent::MouseButtonPress, true, Qt::RightButton};
    row("click", {press, release}, "Press Release");
    row("right button", {right}, "");
    row("double click", {press, release, twice, release}, "Press Release Release");
    row("on the window itself", {press}, "Press", true);
    row("enter and leave", {enter, leave}, "Enter Leave", true);
    row("child entered and left", {enter, leave}, "");
    row("move", {move}, "Move");
    row("click on the element", {elementPress, elementRelease},
        "Press eEnter eMove ePress Release eRelease eMove");
    row("double click on the element", {elementPress, elementRelease, elementTwice, elementRelease},
        "Press eEnter eMove ePress Release eRelease eMove Release eRelease eMove");
    row("right button on the element", {elementRight}, "eEnter eMove");
    row("across the element", {elementMove, move}, "Move eEnter eMove Move eLeave");
}

void TestActionManager::gesturesRunTheirLists()
{
    QFETCH(QVector<Step>, steps);
    QFETCH(bool, onWindow);
    QFETCH(QString, expected);
    RuntimeProject project(gestureProject().c_str());
    WindowForm window(project.node<Nodes::BasicWindow>(10), nullptr);
    window.show();
    project.record({100, 101, 102, 103, 104, 105, 106, 107, 108, 109});
    for (const Step &step : steps)
        send(onWindow ? &window : window.viewport(), step);
    project.run(159); // when this one has run, so have all before it
    QCOMPARE(project.recorded.join(' '), QString(expected + " eLeave").trimmed());
}

void TestActionManager::actionsLearnTheirDisplay()
{
    RuntimeProject project(gestureProject().c_str());
    WindowForm window(project.node<Nodes::BasicWindow>(10), nullptr);
    window.move(FakeScreens::topLeft(1) + QPoint(50, 50));
    project.set(10, "onOpen", "154");
    window.show();
    QCOMPARE(project.node<Nodes::BasicAction>(154)->currentDisplay(), 1);
    send(window.viewport(), press);
    QCOMPARE(project.node<Nodes::BasicAction>(150)->currentDisplay(), 1);
    send(window.viewport(), elementPress);
    QCOMPARE(project.node<Nodes::BasicAction>(155)->currentDisplay(), 1);
}

void TestActionManager::menusOpenAtTheTrigger()
{
    RuntimeProject project(
        R"(<menu id="30" name="M"><menuItem id="31" name="I" actions="20"/></menu>
<actionShowMenu id="20" name="At" menus="30" atTrigger="true" x="7" y="8"/>
<actionShowMenu id="21" name="Fixed" menus="30" x="7" y="8"/>
<window id="10" name="W" width="200" height="100" onPress="20">
  <label id="15" name="E" text="e" x="100" y="10" width="100" height="60" onPress="20 21"/>
  <button id="16" name="B" x="10" y="40" width="60" height="30" pressActions="20"/></window>)");
    WindowForm window(project.node<Nodes::BasicWindow>(10), nullptr);
    window.show();
    QMap<int, int> opened; // places by their x: menus of one gesture stand at once, in any order
    QTimer closer;
    connect(&closer, &QTimer::timeout, this, [&opened] {
        QWidget *menu = QApplication::activePopupWidget();
        if (!menu)
            return;
        opened[menu->x()] = menu->y();
        menu->close();
    });
    closer.start(1);
    using Places = QMap<int, int>;
    send(window.viewport(), press);
    QTRY_COMPARE(opened, (Places{{20, 20}}));
    opened.clear();
    send(window.viewport(), elementPress);
    QTRY_COMPARE(opened.size(), 3); // the window's own too
    QCOMPARE(std::exchange(opened, {}), (Places{{150, 50}, {100, 70}, {7, 8}}));
    send(window.viewport(), elementRelease);
    sendMouse(*window.viewport(), QEvent::MouseButtonPress, {30, 50}, Qt::LeftButton);
    QTRY_COMPARE(opened.size(), 2);
    QCOMPARE(std::exchange(opened, {}), (Places{{30, 50}, {10, 70}}));
    project.push(20); // nobody's gesture: where it is configured, not where the last one was
    QTRY_COMPARE(opened, (Places{{7, 8}}));
}

void TestActionManager::editingRunsNothing()
{
    RuntimeProject project(gestureProject().c_str(), Nodes::WorkModeEditing);
    WindowForm window(project.node<Nodes::BasicWindow>(10), nullptr);
    window.show();
    project.record({100, 109});
    send(window.viewport(), press);
    project.run(159);
    QCOMPARE(project.recorded, QStringList("eLeave"));
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
