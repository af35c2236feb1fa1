#include "support/MessageBoxes.h"
#include "support/Rows.h"
#include "support/ShownElement.h"

#include "widgets/elements/binding/AlarmWatch.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/painting/ScaleTicks.h"
#include "widgets/elements/painting/TabularText.h"
#include "widgets/elements/qwidgetBargraph.h"
#include "widgets/elements/qwidgetRecorderDigitalDisplay.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalQuery.h"
#include "nodes/visual/AlarmMark.h"

#include <cmath>

using namespace Widgets;
using Nodes::Quality;

namespace {

constexpr const char *screen = R"(
<memorySignal id="10" name="T" unit="°C"><alarmLimit id="101" name="a" type="HH" limit="90"/>
  <alarmLimit id="102" name="b" type="H" limit="80"/><alarmLimit id="103" name="c" type="H" limit="70"/>
  <alarmLimit id="104" name="d" type="LL" limit="25"/></memorySignal>
<memorySignal id="11" name="P" decimals="2"/>
<bargraph id="20" name="B" width="100" height="260" signal="10" setPoint="11"/>
<bargraph id="21" name="Lying" width="260" height="100" signal="10" orientation="horizontal"/>
<recorderDisplay id="30" name="R" width="600" height="160">
  <recorderChannel id="31" name="T" signal="10"/><recorderChannel id="32" name="P" signal="11"/>
</recorderDisplay>)";

const QColor barColor(92, 120, 144);
const QColor warningColor(240, 180, 0);
const QColor alarmColor(198, 40, 40);

int count(const QImage &image, const QRect &where, const QColor &color)
{
    int found = 0;
    for (int y = where.top(); y <= where.bottom(); ++y) {
        for (int x = where.left(); x <= where.right(); ++x)
            found += image.pixelColor(x, y) == color;
    }
    return found;
}

} // namespace

class TestGauges : public QObject
{
    Q_OBJECT

private slots:
    void ticksAreRound_data();
    void ticksAreRound();
    void digitsAreEquallyWide();
    void barTellsItsState_data();
    void barTellsItsState();
    void zonesAreOfTheAlarmsThatWatch();
    void alarmsAreMarkedAsTheyStand();
    void onlyWhomItConcernsIsTold();
    void setPointIsFollowed();
    void aChannelFollowsItsOtherSignal();
    void stoppingOneViewLeavesTheOther_data();
    void stoppingOneViewLeavesTheOther();
    void extremesAreKept();
    void resetNeedsTheRight_data();
    void resetNeedsTheRight();
};

void TestGauges::ticksAreRound_data()
{
    using Numbers = QVector<double>;
    const Rows<double, double, int, Numbers, int> row("minimum", "maximum", "divisions", "major",
                                                      "decimals");
    row("hundred", 0, 100, 5, {0, 20, 40, 60, 80, 100}, 0);
    row("over zero", -1, 1, 4, {-1, -0.5, 0, 0.5, 1}, 1);
    row("odd ends", 3, 17, 3, {5, 10, 15}, 0);
    row("small", 0, 0.025, 3, {0, 0.01, 0.02}, 2);
    row("no room", 0, 60, 0, {0}, 0);
    row("empty", 5, 5, 5, {}, 0);
    row("too narrow", 1e17, 1e17 + 16, 5, {}, 0);
    row("endless", 0, qInf(), 5, {}, 0);
}

void TestGauges::ticksAreRound()
{
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    QFETCH(int, divisions);
    QFETCH(QVector<double>, major);
    const ScaleTicks ticks = ScaleTicks::make(minimum, maximum, divisions);
    QCOMPARE(ticks.major.size(), major.size());
    for (int i = 0; i < major.size(); ++i)
        QVERIFY(qAbs(ticks.major[i] - major[i]) < 1e-9);
    QTEST(ticks.decimals, "decimals");
    QVERIFY(major.size() < 2 || ticks.minor.size() > major.size());
}

void TestGauges::digitsAreEquallyWide()
{
    QFont proportional("DejaVu Serif", 20);
    QCOMPARE(TabularText::width(proportional, "111.1"), TabularText::width(proportional, "888.8"));
    QVERIFY(TabularText::width(proportional, "-1") > TabularText::width(proportional, "1"));
}

void TestGauges::barTellsItsState_data()
{
    const Rows<double, Quality, QString, QColor, bool> row("value", "quality", "text", "color",
                                                           "isBeyond");
    row("good", 62.5, Quality::Good, "62.5 °C", barColor, false);
    row("strictest of two warnings", 70, Quality::Good, "70.0 °C", warningColor, false);
    row("outer limit wins", 90, Quality::Good, "90.0 °C", alarmColor, false);
    row("at the low limit", 25, Quality::Good, "25.0 °C", alarmColor, false);
    row("beyond", 104, Quality::Good, "104.0 °C", alarmColor, true);
    row("bad", 62.5, Quality::Bad, "----", QColor(), false);
    row("bad beyond", 104, Quality::Bad, "----", QColor(), false);
}

void TestGauges::barTellsItsState()
{
    QFETCH(double, value);
    QFETCH(Quality, quality);
    QFETCH(QColor, color);
    QFETCH(bool, isBeyond);
    const RuntimeProject project(screen);
    project.publish(10, value, quality);
    for (const unsigned id : {20u, 21u}) {
        const ShownElement<qwidgetBargraph> bar(project, id);
        QCOMPARE(bar->shownQuality(), quality);
        QTEST(bar->shownText(), "text");
        const QImage image = bar->grab().toImage();
        for (const QColor &possible : {barColor, warningColor, alarmColor})
            QCOMPARE(count(image, image.rect(), possible) > 400, possible == color);
        // The arrow stands in the margin that the scale leaves at its end.
        const QRect end = id == 20 ? QRect(40, 0, 50, 14) : QRect(246, 20, 14, 40);
        QCOMPARE(count(image, end, QColor(32, 36, 40)) > 30, isBeyond);
    }
}

void TestGauges::zonesAreOfTheAlarmsThatWatch()
{
    const RuntimeProject project(R"(
<memorySignal id="10" name="T"><alarmLimit id="11" name="h" type="H" limit="80"/>
  <alarmLimit id="12" name="of P" type="HH" limit="50" signal="13"/></memorySignal>
<memorySignal id="13" name="P"/>
<folder id="14" name="F"><alarmLimit id="15" name="l" type="L" limit="20" signal="10"/></folder>)");
    const auto *signal = project.node<Nodes::BasicSignal>(10);
    const auto zones = Nodes::LimitZones::FromAlarms(*signal);
    QCOMPARE(zones.low, 20.0);
    QCOMPARE(zones.high, 80.0);
    QVERIFY(std::isinf(zones.highHigh));
    auto *folder = project.node<Nodes::ConfigNode>(14);
    const auto removed = folder->RemoveNode(15ul);
    QVERIFY(removed && std::isinf(Nodes::LimitZones::FromAlarms(*signal).low));
}

void TestGauges::alarmsAreMarkedAsTheyStand()
{
    using State = Nodes::AlarmState;
    RuntimeProject project(R"(<station id="80" name="St"><alarming id="81" name="A">
  <alarmDiscrete id="13" name="d" signal="12" priority="1"/></alarming></station>
<memorySignal id="10" name="T"><alarmLimit id="11" name="h" type="H" limit="80" deadband="5"/></memorySignal>
<memorySignal id="12" name="Trip" type="bool"/>
<bargraph id="20" name="B" width="100" height="260" signal="10"/>
<recorderDisplay id="30" name="R" width="600" height="80"><recorderChannel id="31" name="c" signal="12"/></recorderDisplay>)");
    const QTemporaryDir records;
    project.core.SetDataDirectory(records.path().toStdString());
    QVERIFY(project.core.Start());
    project.publish(10, 50.0);
    const ShownElement<qwidgetBargraph> bar(project, 20);
    const ShownElement<qwidgetRecorderDigitalDisplay> board(project, 30);
    const auto mark = [&project](unsigned long signal) {
        return Nodes::AlarmMark::Of(*project.node<Nodes::BasicSignal>(signal));
    };
    QImage seen = bar->grab().toImage();
    const auto isRepainted = [&] { return bar->grab().toImage() != seen; };
    const auto look = [&] { seen = bar->grab().toImage(); };
    project.publish(10, 85.0);
    QTRY_VERIFY(mark(10).state == State::ActiveUnacked && isRepainted());
    project.publish(10, 77.0); // below the limit, in the deadband
    QVERIFY(mark(10).state == State::ActiveUnacked && mark(10).token == "H");
    auto *alarming = project.core.GetSystemAlarming();
    const Nodes::NodeLink alarm = project.node(11)->GetNodeLink();
    // States change without a new value from here on, each with a look of its own.
    QTRY_VERIFY(bar->shownText().startsWith("77"));
    look();
    QVERIFY(alarming->Acknowledge(alarm));
    QTRY_VERIFY(isRepainted());
    look();
    QVERIFY(mark(10).state == State::ActiveAcked);
    QVERIFY(alarming->Shelve(alarm, 60));
    QTRY_VERIFY(isRepainted());
    QVERIFY(mark(10).isHidden());
    QVERIFY(ElementTooltip::text(*project.node<Nodes::BasicWidget>(20)).contains("T: h, отложена"));
    const QImage quiet = board->grab().toImage();
    project.publish(12, true); // watched from elsewhere, and no limit
    QTRY_VERIFY(mark(12).state == State::ActiveUnacked);
    QVERIFY(mark(12).isAlarm && mark(12).token == "!");
    QTRY_VERIFY(board->grab().toImage() != quiet);
    QVERIFY(project.core.Stop());
}

void TestGauges::onlyWhomItConcernsIsTold()
{
    const RuntimeProject project(screen);
    const auto *t = project.node<Nodes::BasicSignal>(10);
    const auto *p = project.node<Nodes::BasicSignal>(11);
    QString told;
    AlarmWatch both([&] { told += "both "; });
    auto other = std::make_unique<AlarmWatch>([&] { told += "other "; });
    both.setSignals({p, nullptr, t, t});
    other->setSignals({p});
    std::vector<Nodes::BasicEvent> alarms(3);
    alarms[0].sourceNode = project.node(101)->GetNodeLink();
    alarms[1].sourceNode = project.node(102)->GetNodeLink();
    alarms[2].sourceNode = Nodes::NodeLink(9999);
    AlarmWatch::tell(alarms);
    QCOMPARE(told, QString("both "));
    other->setSignals({t});
    both.setSignals({p});
    AlarmWatch::tell(alarms);
    QCOMPARE(told, QString("both other "));
    other.reset();
    AlarmWatch::tell(alarms);
    QCOMPARE(told, QString("both other "));
}

void TestGauges::setPointIsFollowed()
{
    const RuntimeProject project(screen);
    project.publish(10, 50.0);
    project.publish(11, 20.0);
    const ShownElement<qwidgetBargraph> bar(project, 20);
    const QImage before = bar->grab().toImage();
    project.publish(11, 60.0);
    QTRY_VERIFY(bar->grab().toImage() != before);
    project.publish(11, 20.0);
    QTRY_COMPARE(bar->grab().toImage(), before);
    // What is handed over is of the signal that is shown now.
    QSet<double> heard;
    auto *node = project.node<Nodes::BasicWidget>(20);
    const Nodes::ScopedConnection connection(node->ConnectValueChanged(
        [&heard](const Nodes::SignalValue &value) { heard << value.ToDouble(); }));
    project.set(20, "signal", "11");
    project.publish(11, 30.0);
    QCOMPARE(heard, QSet<double>{30.0});
}

void TestGauges::aChannelFollowsItsOtherSignal()
{
    const RuntimeProject project(screen);
    project.publish(10, 50.0);
    project.publish(11, 20.0);
    project.set(32, "signal", "");
    const ShownElement<qwidgetRecorderDigitalDisplay> board(project, 30);
    project.set(32, "signal", "11");
    QTRY_VERIFY(board->shownText().endsWith("20.00"));
    project.publish(11, 60.0);
    QTRY_VERIFY(board->shownText().endsWith("60.00"));
    QVERIFY(board->extremesText(1).startsWith("мин 20.00  макс 60.00"));
}

void TestGauges::stoppingOneViewLeavesTheOther_data()
{
    const Rows<unsigned> row("element");
    row("bargraph, of its set-point", 20u);
    row("recorder display, of its channels", 30u);
}

void TestGauges::stoppingOneViewLeavesTheOther()
{
    QFETCH(unsigned, element);
    const RuntimeProject project(screen);
    project.publish(10, 50.0);
    project.publish(11, 20.0);
    auto *node = project.node<Nodes::BasicWidget>(element);
    int heard = 0;
    const Nodes::ScopedConnection connection(
        node->ConnectValueChanged([&heard](const Nodes::SignalValue &) { ++heard; }));
    QVERIFY(node->Start() && node->Start() && node->Stop());
    project.publish(11, 60.0);
    QCOMPARE(heard, 1);
    QVERIFY(node->Stop());
    project.publish(11, 70.0);
    QCOMPARE(heard, 1);
    QVERIFY(node->Stop()); // one more than was started
    QVERIFY(node->Start());
    project.publish(11, 80.0);
    QCOMPARE(heard, 2);
    QVERIFY(node->Stop());
}

void TestGauges::extremesAreKept()
{
    const RuntimeProject project(screen);
    project.publish(10, 50.0);
    {
        const ShownElement<qwidgetRecorderDigitalDisplay> board(project, 30);
        QCOMPARE(board->lineCount(), 2);
        QCOMPARE(board->shownText(), QString("50.0 °C\n----"));
        QCOMPARE(board->shownQuality(), Quality::Bad);
    }
    project.publish(10, 40.0); // nobody looks, the channel does
    project.publish(10, 90.0, Quality::Bad);
    project.publish(10, 60.0);
    project.publish(11, 1.0);
    const ShownElement<qwidgetRecorderDigitalDisplay> board(project, 30);
    QVERIFY(board->extremesText(0).startsWith("мин 40.0  макс 60.0  с "));
    QCOMPARE(board->shownText(), QString("60.0 °C\n1.00"));
    project.publish(11, 2.0, Quality::Stale);
    QTRY_COMPARE(board->shownQuality(), Quality::Stale);
    QVERIFY(board->extremesText(1).startsWith("мин 1.00  макс 1.00"));
}

void TestGauges::resetNeedsTheRight_data()
{
    // Where the button is let go, from its top left; the old value in the journal.
    const Rows<QByteArray, QPoint, QString, QString, QString> row("users", "released", "extremes",
                                                                  "message", "entry");
    const QString kept = "мин 40.0  макс 60.0";
    const QString before = "40.0 .. 60.0";
    row("reset", "", {1, 1}, "мин 60.0  макс 60.0", "", before);
    row("let go elsewhere", "", {-20, 5}, kept, "", "");
    row("no right", RuntimeProject::NobodyLoggedIn, {1, 1}, kept, "Внимание: Недостаточно прав",
        before);
}

void TestGauges::resetNeedsTheRight()
{
    QFETCH(QByteArray, users);
    QFETCH(QPoint, released);
    QFETCH(QString, extremes);
    RuntimeProject project(screen + users);
    const QTemporaryDir records;
    project.core.SetDataDirectory(records.path().toStdString());
    QVERIFY(project.core.Start());
    project.publish(10, 40.0);
    project.publish(11, 1.0);
    const ShownElement<qwidgetRecorderDigitalDisplay> board(project, 30);
    project.publish(10, 60.0);
    QTRY_VERIFY(board->shownText().startsWith("60.0"));
    const MessageBoxes boxes;
    const QRect button = board->resetButton(0);
    QVERIFY(button.height() >= 36 && button.width() >= 36);
    QTest::mousePress(board.element, Qt::LeftButton, {}, button.topLeft());
    QTest::mouseRelease(board.element, Qt::LeftButton, {}, button.topLeft() + released);
    QVERIFY2(board->extremesText(0).startsWith(extremes), qPrintable(board->extremesText(0)));
    QTEST(boxes.shown.join('\n'), "message");
    QVERIFY(project.core.GetJournal().Flush());
    std::vector<Nodes::BasicEvent> entries;
    Nodes::JournalQuery query;
    query.text = "Сброс минимума и максимума";
    QVERIFY(project.core.GetJournal().Query(query, entries));
    QTEST(entries.empty() ? QString() : QString::fromStdString(entries.front().oldValue), "entry");
    QVERIFY(project.core.Stop());
}

QTEST_MAIN(TestGauges)
#include "tst_gauges.moc"
