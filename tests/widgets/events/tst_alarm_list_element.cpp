#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/alarmlist/qwidgetAlarmList.h"
#include "widgets/elements/alarms/AlarmBoard.h"
#include "widgets/events/ModelAlarms.h"
#include "widgets/events/TableAlarms.h"
#include "widgets/events/filter/AlarmList.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/visual/elements/widgetAlarmList.h"

#include <QAbstractItemModelTester>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

using namespace Widgets;
using Nodes::AlarmState;

namespace {

constexpr const char *plant = R"(
<station id="80" name="St"><alarming id="3" name="A"/></station>
<folder id="11" name="Boiler"><memorySignal id="10" name="T">
  <alarmLimit id="20" name="a" limit="90" priority="1" text="Перегрев" area="К1"/>
  <alarmLimit id="21" name="b" limit="80" priority="2" text="Горячо" area="К1"/></memorySignal>
</folder>
<memorySignal id="12" name="P">
  <alarmLimit id="22" name="c" limit="5" priority="3" text="Давление" area="К2"/></memorySignal>)";

struct Live : RuntimeProject
{
    explicit Live(const QString &keys = {}, const char *more = "")
        : RuntimeProject((std::string(plant) + more +
                          "<alarmList id=\"30\" name=\"L\" width=\"900\" height=\"400\" " +
                          keys.toStdString() + "/>")
                             .c_str()),
          alarming(*core.GetSystemAlarming()),
          element(node<Nodes::widgetAlarmList>(30), nullptr),
          tester(&element.list(), QAbstractItemModelTester::FailureReportingMode::QtTest)
    {
        if (!alarming.Start())
            qFatal("alarming does not start");
        element.resize(900, 400);
        element.start();
        element.show();
        publish(10, Nodes::SignalValue(95.0));
        publish(12, Nodes::SignalValue(9.0));
    }
    ~Live()
    {
        element.stop();
        (void)alarming.Stop();
        AlarmBoard::instance().clear();
    }
    QStringList listed() const
    {
        QStringList texts;
        const AlarmList &rows = element.list();
        for (int row = 0; row < rows.rowCount(); ++row)
            texts << rows.index(row, rows.columnCount() - 1).data().toString();
        return texts;
    }
    bool hasAll() const { return AlarmBoard::instance().alarms().size() == 3; }
    QPushButton *button(const QString &text) const
    {
        for (QPushButton *each : element.findChildren<QPushButton *>()) {
            if (each->text() == text)
                return each;
        }
        qFatal("no button");
    }
    int waiting() const
    {
        const std::vector<Nodes::BasicEvent> all = alarming.GetActiveAlarms();
        return int(std::count_if(all.begin(), all.end(), [](const Nodes::BasicEvent &each) {
            return each.alarmState == AlarmState::ActiveUnacked;
        }));
    }

    Nodes::systemAlarming &alarming;
    qwidgetAlarmList element;
    QAbstractItemModelTester tester;
};

} // namespace

class TestAlarmList : public QObject
{
    Q_OBJECT

private slots:
    void listsWhatItsNodeChooses_data()
    {
        const Rows<QString, QStringList> row("keys", "listed");
        row("all, the gravest first", "", {"Перегрев", "Горячо", "Давление"});
        row("priorities", R"(priority1="false" priority3="false")", {"Горячо"});
        row("area", R"(area="К2")", {"Давление"});
        row("below a node", R"(source="11")", {"Перегрев", "Горячо"});
        row("of one alarm", R"(source="21")", {"Горячо"});
        row("text", R"(search="ДАВЛ")", {"Давление"});
        row("acknowledged ones only", R"(waiting="false")", {});
    }

    void listsWhatItsNodeChooses()
    {
        QFETCH(QString, keys);
        QFETCH(QStringList, listed);
        Live live(keys);
        QTRY_VERIFY(live.hasAll());
        QTRY_COMPARE(live.listed(), listed);
        live.element.stop(); // what changes meanwhile is caught up with
        live.publish(10, Nodes::SignalValue(20.0));
        QTRY_COMPARE(AlarmBoard::instance().of(10).state, AlarmState::ReturnedUnacked);
        live.element.start();
        QTRY_COMPARE(live.listed().size(), listed.size());
    }

    void aChangedChoiceCountsAtOnce()
    {
        const Live live;
        QTRY_COMPARE(live.listed().size(), 3);
        live.set(30, "source", "12");
        QTRY_COMPARE(live.listed(), QStringList("Давление"));
        live.set(30, "source", "");
        QTRY_COMPARE(live.listed().size(), 3);
    }

    void acknowledgesWhatIsShown()
    {
        const Live live(R"(area="К1")");
        QTRY_COMPARE(live.listed().size(), 2);
        QTest::mouseClick(live.button("Квитировать показанные"), Qt::LeftButton);
        QTRY_COMPARE(live.waiting(), 1); // the other area's
        QTRY_VERIFY(!live.button("Квитировать показанные")->isEnabled());
        QCOMPARE(live.listed().size(), 2);
    }

    void acknowledgesTheSelectedRow()
    {
        const Live live;
        QTRY_COMPARE(live.listed().size(), 3);
        QVERIFY(!live.button("Квитировать выбранный")->isEnabled());
        live.element.table().selectRow(1);
        QTRY_VERIFY(live.button("Квитировать выбранный")->isEnabled());
        QTest::mouseClick(live.button("Квитировать выбранный"), Qt::LeftButton);
        QTRY_COMPARE(live.waiting(), 2);
        QTRY_COMPARE(AlarmBoard::instance().alarms().value(21).alarmState, AlarmState::ActiveAcked);
    }

    void whoMayNotAcknowledgeCannot()
    {
        const Live live({}, R"(<authentication id="90" name="A"/><user id="91" name="U"/>)");
        QTRY_COMPARE(live.listed().size(), 3);
        live.element.table().selectRow(0);
        QVERIFY(!live.button("Квитировать показанные")->isEnabled());
        QVERIFY(!live.button("Квитировать выбранный")->isEnabled());
        QTRY_VERIFY(live.button("К источнику")->isEnabled());
    }

    void showsWithoutButtons()
    {
        const Live live(R"(acknowledge="false")");
        QTRY_COMPARE(live.listed().size(), 3);
        QVERIFY(live.button("Квитировать показанные")->isHidden());
        emit live.element.table().rowDoubleClicked(
            live.element.list().mapToSource(live.element.list().index(0, 0)));
        QCOMPARE(live.waiting(), 3);
    }
    // The first of a storm at once, the rest together.
    void takesAStormInPieces()
    {
        Live live;
        QTRY_COMPARE(live.listed().size(), 3);
        const QSignalSpy sorted(&live.element.list(), &QAbstractItemModel::layoutChanged);
        std::vector<Nodes::BasicEvent> again = live.alarming.GetActiveAlarms();
        for (int piece = 0; piece < 20; ++piece) {
            for (Nodes::BasicEvent &alarm : again)
                alarm.text = "Изменение " + std::to_string(piece);
            AlarmBoard::instance().take(again);
        }
        QVERIFY(sorted.count() < 20);
        const QString last = "Изменение 19";
        QTRY_COMPARE(live.listed(), QStringList({last, last, last}));
        QVERIFY(sorted.count() > 0);
    }
    void tellsWhenAlarmsAreNotWatched()
    {
        Live live;
        QTRY_VERIFY(live.hasAll());
        (void)live.alarming.Stop();
        const auto isTold = [&] {
            const auto labels = live.element.findChildren<QLabel *>();
            return std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
                return label->text().contains("не отслеживаются");
            });
        };
        QTRY_VERIFY(isTold());
    }
};

QTEST_MAIN(TestAlarmList)
#include "tst_alarm_list_element.moc"
