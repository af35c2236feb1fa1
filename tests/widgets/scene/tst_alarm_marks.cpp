#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/elements/alarms/AlarmBoard.h"
#include "widgets/elements/alarms/BlinkClock.h"
#include "widgets/elements/painting/AlarmShapes.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/marks/AlarmMarks.h"
#include "widgets/scene/marks/AlarmOverlay.h"
#include "widgets/windows/WindowForm.h"

#include <QBackingStore>

using namespace Widgets;
using Nodes::AlarmState;

Q_DECLARE_METATYPE(Nodes::AlarmState)

namespace {

constexpr const char *screen = R"(
<memorySignal id="10" name="T"><alarmLimit id="20" name="HH" limit="90"/>
  <alarmLimit id="21" name="H" limit="80"/></memorySignal>
<memorySignal id="11" name="Calm"/>
<window id="30" name="W" width="300" height="120" background="#d3d7da">
  <label id="31" name="Marked" x="40" y="40" width="80" height="30" signal="10"/>
  <label id="32" name="Off" x="160" y="40" width="80" height="30" signal="10"
         alarmIndication="false"/>
  <label id="33" name="Calm" x="40" y="90" width="80" height="20" signal="11"/></window>)";

using Alarms = std::vector<Nodes::BasicEvent>;

Nodes::BasicEvent alarm(unsigned long id, AlarmState state, int priority)
{
    Nodes::BasicEvent event;
    event.id = id;
    event.sourceNode = Nodes::NodeLink(id);
    event.alarmState = state;
    event.priority = priority;
    return event;
}

struct Shown : RuntimeProject
{
    explicit Shown(Nodes::enWorkMode mode = Nodes::WorkModeRuntime)
        : RuntimeProject(screen, mode), window(node<Nodes::BasicWindow>(30), nullptr)
    {
        window.show();
    }
    ~Shown() { AlarmBoard::instance().clear(); }

    ProxyWidget *host(unsigned long id) const
    {
        for (ProxyWidget *each : window.proxyScene()->getLayers().first()->getWidgets()) {
            if (each->getNodeLink().GetNodeId() == id)
                return each;
        }
        return nullptr;
    }
    const AlarmOverlay *sign(unsigned long id) const
    {
        const AlarmMarks *marks = window.proxyScene()->alarmMarks();
        return marks ? marks->on(*host(id)) : nullptr;
    }
    QImage drawn() { return window.grab().toImage(); }

    WindowForm window;
};

bool has(const QImage &image, const QRect &area, const QColor &color)
{
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixelColor(x, y) == color)
                return true;
        }
    }
    return false;
}

const QRect frameRight(121, 45, 5, 20); // beside the marked element

} // namespace

class TestAlarmMarks : public QObject
{
    Q_OBJECT

private slots:
    void theMostUrgentIsShown_data()
    {
        const Rows<Alarms, AlarmState, int> row("alarms", "state", "priority");
        using S = AlarmState;
        row("none", {}, S::Normal, 0);
        row("one", {alarm(20, S::ActiveUnacked, 1)}, S::ActiveUnacked, 1);
        row("the graver, and that another waits",
            {alarm(20, S::ActiveAcked, 1), alarm(21, S::ActiveUnacked, 2)}, S::ActiveUnacked, 1);
        row("the same the other way round",
            {alarm(21, S::ActiveUnacked, 2), alarm(20, S::ActiveAcked, 1)}, S::ActiveUnacked, 1);
        row("active before returned",
            {alarm(20, S::ReturnedUnacked, 1), alarm(21, S::ActiveAcked, 3)}, S::ActiveAcked, 3);
        row("returned before hidden", {alarm(20, S::Shelved, 1), alarm(21, S::ReturnedUnacked, 4)},
            S::ReturnedUnacked, 4);
        row("hidden", {alarm(20, S::OutOfService, 2)}, S::OutOfService, 2);
        row("latched", {alarm(20, S::AwaitingReset, 2)}, S::ActiveAcked, 2);
        row("over", {alarm(20, S::Normal, 1)}, S::Normal, 0);
    }

    void theMostUrgentIsShown()
    {
        QFETCH(Alarms, alarms);
        const Shown shown;
        for (Nodes::BasicEvent &each : alarms)
            each.sourceNode = Nodes::NodeLink(each.id); // of this project
        AlarmBoard::instance().take({alarm(20, AlarmState::ActiveUnacked, 4)});
        AlarmBoard::instance().take({alarm(20, AlarmState::Normal, 4)});
        AlarmBoard::instance().take(alarms);
        const AlarmOverlay *sign = shown.sign(31);
        QTEST(sign ? sign->summary().state : AlarmState::Normal, "state");
        QTEST(sign ? sign->summary().priority : 0, "priority");
        QVERIFY(!shown.sign(32) && !shown.sign(33));
    }

    void statesAreToldApart_data()
    {
        const Rows<AlarmState, bool, bool> row("state", "colored", "blinks");
        row("active, unacknowledged", AlarmState::ActiveUnacked, true, true);
        row("active, acknowledged", AlarmState::ActiveAcked, true, false);
        row("returned, unacknowledged", AlarmState::ReturnedUnacked, false, false);
        row("shelved", AlarmState::Shelved, false, false);
    }

    void statesAreToldApart()
    {
        QFETCH(AlarmState, state);
        QTRY_VERIFY(!BlinkClock::instance().isRunning());
        Shown shown;
        const QImage calm = shown.drawn();
        AlarmBoard::instance().take({alarm(20, state, 1)});
        const QImage marked = shown.drawn();
        QVERIFY(marked != calm);
        QTEST(has(marked, frameRight, AlarmShapes::color(1)), "colored");
        QCOMPARE(has(marked, frameRight, QColor(0x1c, 0x20, 0x24)), state != AlarmState::Shelved);
        const QRect value(62, 42, 56, 26); // right of the badge's corner
        QCOMPARE(marked.copy(value), calm.copy(value));
        QTEST(BlinkClock::instance().isRunning(), "blinks");
        AlarmBoard::instance().take({alarm(20, AlarmState::Normal, 1)});
        QCOMPARE(shown.drawn(), calm);
        QTRY_VERIFY(!BlinkClock::instance().isRunning());
    }

    void blinksByTheClock()
    {
        Shown shown;
        AlarmBoard::instance().take({alarm(20, AlarmState::ActiveUnacked, 1)});
        QVERIFY(has(shown.drawn(), frameRight, AlarmShapes::color(1)));
        QTRY_VERIFY(!has(shown.drawn(), frameRight, AlarmShapes::color(1)));
        QTRY_VERIFY(has(shown.drawn(), frameRight, AlarmShapes::color(1)));
    }

    void followsItsElement()
    {
        Shown shown;
        AlarmBoard::instance().take({alarm(20, AlarmState::ActiveAcked, 2)});
        shown.set(31, "x", "100");
        QTRY_COMPARE(shown.sign(31)->boundingRect().center().x(), 140.0);
        shown.set(31, "visible", "false");
        QTRY_VERIFY(!shown.sign(31)->isVisible());
        shown.set(33, "signal", "10");
        QTRY_VERIFY(shown.sign(33));
        shown.set(33, "alarmIndication", "false");
        QTRY_VERIFY(!shown.sign(33));
    }

    // A window opened later shows what is in alarm already; one that is hidden follows nothing.
    void beginsAndEndsWithTheScene()
    {
        Shown shown;
        shown.window.hide();
        AlarmBoard::instance().take({alarm(20, AlarmState::ActiveAcked, 2)});
        QVERIFY(!shown.sign(31));
        shown.window.show();
        QVERIFY(shown.sign(31));
    }

    void paintsNoMoreThanItChanges()
    {
        using S = AlarmState;
        Shown shown;
        QVERIFY(QTest::qWaitForWindowExposed(&shown.window));
        shown.set(33, "signal", "10"); // its sign reaches the edge of the scene
        shown.set(33, "x", "0");
        const auto seen = [&] {
            return static_cast<QImage *>(shown.window.backingStore()->paintDevice())->copy();
        };
        for (const S state : {S::ActiveUnacked, S::Shelved, S::ReturnedUnacked, S::ActiveAcked,
                              S::OutOfService, S::ActiveUnacked, S::Normal}) {
            AlarmBoard::instance().take({alarm(20, state, 2)});
            QTest::qWait(50); // painted, and no beat came between both pictures
            const QImage partly = seen();
            shown.window.viewport()->repaint();
            QCOMPARE(partly, seen());
        }
    }

    void takesNoInput()
    {
        Shown shown;
        AlarmBoard::instance().take({alarm(20, AlarmState::ActiveUnacked, 1)});
        QCOMPARE(shown.window.proxyScene()->itemAt({41, 41}, {}), shown.host(31));
    }

    void theEditorShowsNone()
    {
        const Shown shown(Nodes::WorkModeEditing);
        shown.window.proxyScene()->start();
        AlarmBoard::instance().take({alarm(20, AlarmState::ActiveUnacked, 1)});
        QVERIFY(!shown.sign(31));
    }
};

QTEST_MAIN(TestAlarmMarks)
#include "tst_alarm_marks.moc"
