#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/context/ActionSink.h"
#include "widgets/context/OwedActions.h"
#include "widgets/elements/alarms/AlarmBoard.h"
#include "widgets/elements/alarms/qwidgetAlarmBanner.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/visual/elements/widgetAlarmBanner.h"

#include <QScopedPointer>

using namespace Widgets;
using Nodes::AlarmState;

namespace {

constexpr const char *station = R"(
<station id="80" name="St"><alarming id="3" name="A"/></station>
<memorySignal id="10" name="T"><alarmLimit id="20" name="HH" limit="90" priority="1" text="Перегрев"/>
  <alarmLimit id="21" name="H" limit="80" priority="2" text="Горячо"/></memorySignal>
<alarmBanner id="30" name="B" width="740" height="48"/>)";

struct Row
{
    unsigned long id;
    AlarmState state;
    int priority;
    Nodes::Timestamp raised;
    const char *area = "";
};
using Alarms = std::vector<Row>;

Nodes::BasicEvent eventOf(const Row &row)
{
    Nodes::BasicEvent event;
    event.sourceNode = Nodes::NodeLink(row.id);
    event.alarmState = row.state;
    event.priority = row.priority;
    event.raised = event.time = row.raised;
    event.occurrence = row.id;
    event.area = row.area;
    event.text = std::to_string(row.id);
    return event;
}

BannerFacts::Alarms board(const Alarms &alarms)
{
    BannerFacts::Alarms board;
    for (const Row &row : alarms)
        board.insert(row.id, eventOf(row));
    return board;
}

/// Notes what the banner asks for.
class Wishes : public ActionSink
{
public:
    ActionTrigger triggerAt(const QWidget *, const std::optional<QPoint> &,
                            ActionOrigin) const override
    {
        return {};
    }
    void push(const Nodes::NodeLinks &, const ActionTrigger &) override {}
    std::unique_ptr<OwedActions> owe(const Nodes::NodeLinks &, const ActionTrigger &) override
    {
        return nullptr;
    }
    void warn(const QString &) override {}
    void notify(const QString &) override { told << "notify"; }
    void journalOnce(const Nodes::ConfigNode &, const std::string &) override {}
    void jump(const Nodes::NodeLink &source, const QWidget *) override
    {
        told << "jump " + QString::number(source.GetNodeId());
    }
    void showAlarms() override { told << "alarms"; }

    QStringList told;
};

struct Live : RuntimeProject
{
    explicit Live(bool isRunning = true, const char *more = "")
        : RuntimeProject((std::string(station) + more).c_str()),
          alarming(*core.GetSystemAlarming()),
          wishes(std::make_shared<Wishes>())
    {
        if (isRunning && !alarming.Start())
            qFatal("alarming does not start");
        auto context = std::make_shared<SceneContext>();
        context->setActions(wishes);
        banner.reset(new qwidgetAlarmBanner(node<Nodes::widgetAlarmBanner>(30), nullptr, context));
        banner->resize(740, 48);
        banner->start();
    }
    ~Live()
    {
        banner.reset();
        (void)alarming.Stop();
        AlarmBoard::instance().clear();
    }
    void click(BannerPainter::Part part)
    {
        for (int x = 0; x < banner->width(); ++x) {
            const QPoint place(x, 24);
            if (banner->painter().partAt(place) == part)
                return QTest::mouseClick(banner.data(), Qt::LeftButton, {}, place);
        }
        QFAIL("no such part");
    }

    Nodes::systemAlarming &alarming;
    std::shared_ptr<Wishes> wishes;
    QScopedPointer<qwidgetAlarmBanner> banner;
};

} // namespace

Q_DECLARE_METATYPE(Alarms)
Q_DECLARE_METATYPE(BannerFacts::State)

class TestAlarmBanner : public QObject
{
    Q_OBJECT

private slots:
    void tellsOfTheNextToBeSeenTo_data()
    {
        using S = AlarmState;
        const Rows<Alarms, std::string, BannerFacts::State, unsigned long, QString, int> row(
            "alarms", "area", "state", "top", "counts", "hidden");
        const auto waiting = BannerFacts::Waiting;
        row("none", {}, "", BannerFacts::Calm, 0, "0/0 0/0 0/0 0/0", 0);
        row("the gravest, not the newest",
            {{1, S::ActiveUnacked, 2, 50}, {2, S::ActiveUnacked, 1, 10}}, "", waiting, 2,
            "1/1 1/1 0/0 0/0", 0);
        row("the newest of the gravest",
            {{1, S::ActiveUnacked, 2, 50}, {2, S::ActiveUnacked, 2, 60}}, "", waiting, 2,
            "0/0 2/2 0/0 0/0", 0);
        row("gone, but nobody has seen it",
            {{1, S::ReturnedUnacked, 1, 5}, {2, S::ActiveUnacked, 3, 9}}, "", waiting, 1,
            "1/0 0/0 1/1 0/0", 0);
        row("all seen", {{1, S::ActiveAcked, 1, 5}, {2, S::AwaitingReset, 4, 5}}, "",
            BannerFacts::Acknowledged, 0, "0/1 0/0 0/0 0/1", 0);
        row("hidden ones only", {{1, S::Shelved, 1, 5}, {2, S::Suppressed, 2, 5}}, "",
            BannerFacts::Calm, 0, "0/0 0/0 0/0 0/0", 2);
        row("of its area", {{1, S::ActiveUnacked, 1, 5, "К2"}, {2, S::ActiveUnacked, 4, 5, "К1"}},
            "К1", waiting, 2, "0/0 0/0 0/0 1/1", 0);
    }

    void tellsOfTheNextToBeSeenTo()
    {
        QFETCH(Alarms, alarms);
        QFETCH(std::string, area);
        const BannerFacts facts = BannerFacts::of(board(alarms), area);
        QTEST(facts.state, "state");
        QTEST(facts.top.occurrence, "top");
        QStringList counts;
        for (const BannerFacts::Count &count : facts.counts)
            counts << QStringLiteral("%1/%2").arg(count.waiting).arg(count.active);
        QTEST(counts.join(' '), "counts");
        QTEST(facts.hidden, "hidden");
    }

    void knowsWhenItIsLate_data()
    {
        using S = AlarmState;
        const Rows<Alarms, Alarms, bool> row("actual", "known", "late");
        row("nothing", {}, {}, false);
        row("known", {{1, S::ActiveUnacked, 1, 10}}, {{1, S::ActiveUnacked, 1, 10}}, false);
        row("unknown", {{1, S::ActiveUnacked, 1, 10}}, {}, true);
        row("another state", {{1, S::ActiveAcked, 1, 10}}, {{1, S::ActiveUnacked, 1, 10}}, true);
        row("on its way", {{1, S::ActiveUnacked, 1, 200}}, {}, false);
    }

    void knowsWhenItIsLate()
    {
        QFETCH(Alarms, actual);
        QFETCH(Alarms, known);
        std::vector<Nodes::BasicEvent> events;
        for (const Row &row : actual)
            events.push_back(eventOf(row));
        QTEST(BannerFacts::isLate(events, board(known), 100), "late");
    }

    void saysWhenNobodyWatches()
    {
        const Live off(false);
        QCOMPARE(off.banner->facts().state, BannerFacts::Off);
        QVERIFY(off.banner->facts().headline().contains("не отслеживаются"));
        const QImage shown = off.banner->grab().toImage();
        QCOMPARE(shown.pixelColor(20, 4), QColor(198, 40, 40));
    }

    void aDeadFeedIsTold()
    {
        Live live;
        AlarmBoard::instance().clear();
        live.publish(10, Nodes::SignalValue(95.0));
        QTRY_COMPARE(live.banner->facts().state, BannerFacts::Waiting);
        AlarmBoard::instance().clear(); // as if nothing had got here
        QTRY_COMPARE(live.banner->facts().state, BannerFacts::Calm);
        QTRY_COMPARE_WITH_TIMEOUT(live.banner->facts().state, BannerFacts::Late, 15000);
        QVERIFY(live.banner->facts().headline().contains("не обновляется"));
    }

    void partsDoWhatTheySay()
    {
        Live live;
        live.click(BannerPainter::Counts);
        QCOMPARE(live.wishes->told, QStringList("alarms"));
        live.publish(10, Nodes::SignalValue(95.0));
        QTRY_COMPARE(live.banner->facts().top.text, std::string("Перегрев"));
        QCOMPARE(live.banner->facts().notes(), QStringList());
        live.click(BannerPainter::Text);
        live.click(BannerPainter::Counts);
        QCOMPARE(live.wishes->told, QStringList({"alarms", "jump 20", "alarms"}));
        live.click(BannerPainter::Button); // the one shown, no other
        QTRY_COMPARE(live.banner->facts().top.text, std::string("Горячо"));
        QCOMPARE(live.banner->facts().counts[0].waiting, 0);
        live.click(BannerPainter::Button);
        QTRY_COMPARE(live.banner->facts().state, BannerFacts::Acknowledged);
    }

    void whoMayNotAcknowledgeDoesNot()
    {
        Live live(true, R"(<authentication id="90" name="A"/><user id="91" name="U"/>)");
        live.publish(10, Nodes::SignalValue(85.0));
        QTRY_COMPARE(live.banner->facts().state, BannerFacts::Waiting);
        QVERIFY(!live.banner->facts().mayAcknowledge);
        live.click(BannerPainter::Button);
        QCoreApplication::processEvents();
        QCOMPARE(live.alarming.GetActiveAlarms().front().alarmState, AlarmState::ActiveUnacked);
        QCOMPARE(live.wishes->told, QStringList("notify")); // and why
    }

    void notesWhatIsHeardAndSeenLess()
    {
        const Live live;
        AlarmBoard::instance().setMuted(true);
        AlarmBoard::instance().setFilter("П1");
        AlarmBoard::instance().take({eventOf({20, AlarmState::Shelved, 1, 5})});
        QTRY_COMPARE(live.banner->facts().notes(),
                     QStringList({"Звук выключен", "Фильтр", "Скрыто: 1"}));
    }
};

QTEST_MAIN(TestAlarmBanner)
#include "tst_alarm_banner.moc"
