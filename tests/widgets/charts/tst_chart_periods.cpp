#include "OperatedChart.h"
#include "support/Rows.h"

#include "widgets/charts/marks/EventMarks.h"
#include "widgets/charts/overlay/PastPeriodDialog.h"
#include "widgets/charts/overlay/PastPeriods.h"
#include "widgets/charts/overlay/ShiftText.h"
#include "widgets/charts/zones/ZoneHandle.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/system/systemCore.h"

#include <QHelpEvent>
#include <QToolTip>

#include <qwt_plot_curve.h>

using namespace Widgets;

using Places = std::vector<double>;
using Counts = std::vector<int>;

Q_DECLARE_METATYPE(Places)
Q_DECLARE_METATYPE(Counts)

/// What stands on a trend beside its curves: past periods and marks of events.
class TestChartPeriods : public QObject
{
    Q_OBJECT

private slots:
    void pastStandsOnThePresentAsADashedLine()
    {
        OperatedChart chart;
        for (int i = 0; i <= 600; i += 60)
            chart.archive->samples.emplace_back(OperatedChart::time(i - 86400), i,
                                                Nodes::Quality::Good);
        QSignalSpy completed(chart.aids->pastPeriods(), &PastPeriods::completed);
        chart.serie().setColor(Qt::darkGreen);
        chart.choose("Сутки назад");
        QTRY_COMPARE(completed.count(), 1);
        QCOMPARE(chart.legend->rows().rowCount(), 4);
        ISerie *past = chart.legend->rows().serie(2);
        QCOMPARE(past->pointCount(), std::size_t(11));
        QCOMPARE(past->lastPoint(), QPointF(OperatedChart::at(600), 600));
        const auto &curve = dynamic_cast<QwtPlotCurve &>(*past);
        QCOMPARE(curve.pen().style(), Qt::DashLine);
        QCOMPARE(curve.pen().color(), QColor(Qt::darkGreen));
        QCOMPARE(chart.legend->rows().index(2, int(SerieColumn::Name)).data().toString(),
                 QString("Температура подачи (−1 сут)"));
        chart.setWindow(60, 660); // within what is held
        chart.setWindow(6000, 6600);
        QTRY_COMPARE(completed.count(), 2);
        chart.choose("Убрать наложение");
        QCOMPARE(chart.legend->rows().rowCount(), 2);
    }
    void periodIsChosenByItsBegin()
    {
        PastPeriodDialog dialog;
        QSignalSpy chosen(&dialog, &PastPeriodDialog::chosen);
        const QDateTime begin(QDate(2026, 3, 2), QTime(8, 0));
        dialog.setPresent(begin);
        QCOMPARE(dialog.begin(), begin.addDays(-1));
        dialog.accept();
        QCOMPARE(chosen.first().first().toDouble(), 86400e3);
    }
    void shiftsAreReadAsTimes_data()
    {
        const Rows<double, QString> row("ms", "text");
        row("day", 86400e3, "−1 сут");
        row("mixed", 86400e3 + 2 * 3600e3 + 5e3, "−1 сут 2 ч 5 с");
        row("nothing", 0, "−0 с");
    }
    void shiftsAreReadAsTimes()
    {
        QFETCH(double, ms);
        QTEST(ShiftText(ms), "text");
    }
    void eventsThatStandCloseShareAMark_data()
    {
        const Rows<Places, Counts> row("places", "counts");
        row("none", {}, {});
        row("apart", {10, 40, 70}, {1, 1, 1});
        row("close", {10, 12, 29, 30, 55}, {3, 1, 1});
    }
    void eventsThatStandCloseShareAMark()
    {
        QFETCH(Places, places);
        QFETCH(Counts, counts);
        std::vector<Nodes::BasicEvent> events(places.size());
        if (events.size() > 2)
            events[1].level = Nodes::LevelAlarm;
        const auto marks = ClusterMarks(places, events, 20);
        Counts found;
        for (const MarkCluster &mark : marks)
            found.push_back(int(mark.count));
        QCOMPARE(found, counts);
        if (!counts.empty() && counts.front() == 3)
            QCOMPARE(marks.front().gravest, std::size_t(1));
    }
    void eventsOfTheShownSignalsAreMarkedAndTold()
    {
        OperatedChart chart;
        QVERIFY(chart.core.GetJournal().Open(chart.data.filePath("j.sqlite").toStdString()));
        chart.core.GetJournal().SetHome(chart.core.GetRecordHome(),
                                        chart.core.GetNodesCollection());
        EventMarks &marks = *chart.aids->marks();
        marks.setShown(false); // not live
        store(chart, 10, 120, "Насос включён");
        store(chart, 30, 125, "Температура высока"); // alarm of the signal
        store(chart, 12, 130, "чужое");
        store(chart, 10, -9000, "вне окна");
        QVERIFY(chart.core.GetJournal().Flush());
        QSignalSpy completed(&marks, &EventMarks::completed);
        marks.setShown(true);
        QTRY_COMPARE(completed.count(), 1);
        QCOMPARE(texts(marks), QStringList({"Насос включён", "Температура высока"}));
        const QPoint place(chart.place(122, 0).x(), chart.plot->canvas()->height() - 8);
        const QString told = marks.textAt(place);
        QVERIFY(told.contains("Насос включён") && told.contains("Температура высока"));
        chart.click(place);
        QTRY_VERIFY(QToolTip::text().contains("Температура высока"));
        store(chart, 10, 300, "Живое");
        QTRY_COMPARE(marks.events().size(), std::size_t(3));
        chart.setWindow(-9300, -8700); // of what was asked before nothing is kept
        QTRY_COMPARE(texts(marks), QStringList({"вне окна", "Живое"}));
        chart.choose("Отметки событий");
        QCOMPARE(marks.textAt(place), QString());
    }

    void whatMayNotBeViewedAnyMoreGoes()
    {
        OperatedChart chart((std::string(OperatedChart::nodes) + guarded).c_str());
        auto *users = chart.node<Nodes::systemAuthentication>(61);
        QVERIFY(users->Authenticate(chart.node(67)->GetNodeLink()));
        chart.archive->samples.emplace_back(OperatedChart::time(60 - 86400), 1,
                                            Nodes::Quality::Good);
        chart.choose("Сутки назад");
        const ISerie &past = *chart.legend->rows().serie(2);
        QTRY_COMPARE(past.pointCount(), std::size_t(1));
        QVERIFY(chart.core.GetJournal().Open(chart.data.filePath("j.sqlite").toStdString()));
        chart.core.GetJournal().SetHome(chart.core.GetRecordHome(),
                                        chart.core.GetNodesCollection());
        EventMarks &marks = *chart.aids->marks();
        marks.setShown(true);
        store(chart, 10, 120, "Насос включён");
        QTRY_COMPARE(marks.events().size(), std::size_t(1));
        chart.append(0, 100, 40.0);
        chart.plot->createPicker();
        chart.click(chart.place(100, 40));
        QCOMPARE(chart.markers("x-marker").size(), std::size_t(2));
        const ZoneHandle *handle = chart.plot->findChild<ZoneHandle *>();
        chart.publish(12, 50.0);
        QTRY_VERIFY(handle && handle->isVisible());
        users->Logout();
        chart.plot->onUserChanged();
        QVERIFY(!handle->isVisible());
        QCOMPARE(chart.markers("x-marker").size(), std::size_t(0));
        QCOMPARE(past.pointCount(), std::size_t(0));
        QCOMPARE(marks.events().size(), std::size_t(0));
        QMenu menu;
        chart.aids->fillMenu(menu, {});
        for (const QAction *action : menu.findChildren<QAction *>())
            QVERIFY(action->text() != "Температура подачи");
    }

private:
    static constexpr const char *guarded = R"(
<station id="60" name="St"><authentication id="61" name="A" guestRole="62">
  <role id="62" name="Guest"><grant id="63" privileges="view"/>
    <grant id="64" privileges="view" scope="10" mode="deny"/></role>
  <role id="65" name="All"><grant id="66" privileges="all"/></role>
  <user id="67" name="u" roles="65" passwordless="true"/></authentication></station>)";

    static void store(const OperatedChart &chart, unsigned long source, double seconds,
                      const char *text)
    {
        Nodes::BasicEvent event;
        event.time = OperatedChart::time(seconds);
        event.text = text;
        event.sourceNode = chart.node(source)->GetNodeLink();
        event.source = chart.node(source)->GetName();
        QVERIFY(chart.core.GetJournal().Append(event));
    }
    static QStringList texts(const EventMarks &marks)
    {
        QStringList found;
        for (const Nodes::BasicEvent &event : marks.events())
            found << QString::fromStdString(event.text);
        return found;
    }
};

QTEST_MAIN(TestChartPeriods)
#include "tst_chart_periods.moc"
