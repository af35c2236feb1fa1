#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/elements/health/HealthCsv.h"
#include "widgets/elements/health/HealthPage.h"
#include "widgets/elements/health/HealthText.h"
#include "widgets/elements/health/MeasureModel.h"
#include "widgets/elements/health/TrialModel.h"
#include "widgets/elements/health/WhatIfDialog.h"
#include "widgets/elements/health/WorkerJob.h"
#include "widgets/elements/health/qwidgetAlarmHealth.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/archive/recording/ArchiveRecording.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/visual/elements/widgetAlarmHealth.h"

#include <QAbstractItemModelTester>
#include <QTableView>

#include <thread>

using namespace Widgets;

namespace {

constexpr Nodes::Timestamp second = 1000000;

constexpr const char *station = R"(
<station id="50" name="St"><alarming id="51" name="T" floodBegin="3" floodEnd="9"/><shiftTable id="54" name="W" starts="00:00" names="круглые сутки"/><archiver id="52" name="A">
  <archiverSource id="53" name="S" signal="10"/></archiver></station>
<memorySignal id="10" name="T" unit="°C"><alarmLimit id="11" name="H" type="H" limit="80"/></memorySignal>
<memorySignal id="12" name="P"><alarmLimit id="13" name="L" type="L" limit="5" priority="1"/></memorySignal>
<alarmHealth id="20" name="Health" width="1200" height="700" period="day"/>)";

/// Figures of three alarms: one chatters, one is fleeting, one stands.
Nodes::AlarmFigures figures()
{
    Nodes::AlarmFigures made;
    made.begin = 1700000000 * second;
    made.end = made.begin + 86400 * second;
    made.perBin.assign(144, 1);
    made.raised = 144;
    made.perPriority = {44, 0, 100, 0};
    const auto add = [&](unsigned long node, std::uint64_t raised) {
        Nodes::AlarmCount count;
        count.alarm = Nodes::NodeLink(node);
        count.text = "Тревога \"" + std::to_string(node) + "\"";
        count.priority = 2;
        count.raised = raised;
        made.alarms.push_back(count);
        return &made.alarms.back();
    };
    made.alarms.reserve(3);
    add(11, 100)->chattering = 7;
    add(13, 43)->fleeting = 2;
    add(14, 1)->longestStanding = 90000 * second;
    made.chatteringAlarms = made.fleetingAlarms = made.standingAlarms = 1;
    return made;
}

} // namespace

class TestAlarmHealth : public QObject
{
    Q_OBJECT

private slots:
    void durations_data()
    {
        const Rows<qint64, QString> row("seconds", "text");
        row("seconds", 59, "59 с");
        row("minutes", 61, "1 мин 1 с");
        row("whole hours", 7200, "2 ч");
        row("days", 86400 + 2 * 3600 + 59 * 60, "1 сут 2 ч");
    }
    void durations()
    {
        QFETCH(qint64, seconds);
        QTEST(HealthText::duration(seconds * second), "text");
    }

    void listsAreByKind_data()
    {
        const Rows<int, unsigned long> row("kind", "first");
        row("chattering", NuisanceModel::Chattering, 11);
        row("fleeting", NuisanceModel::Fleeting, 13);
        row("standing", NuisanceModel::Standing, 14);
    }
    void listsAreByKind()
    {
        QFETCH(int, kind);
        NuisanceModel model;
        const QAbstractItemModelTester tester(&model);
        model.setAlarms(figures(), NuisanceModel::Frequent);
        QCOMPARE(model.rowCount(), 3);
        model.setAlarms(figures(), NuisanceModel::Kind(kind));
        QCOMPARE(model.rowCount(), 1);
        QTEST(model.alarmAt(0)->alarm.GetNodeId(), "first");
        QCOMPARE(model.rowOf(Nodes::NodeLink(99)), -1);
    }

    void verdictsHaveSignAndWord()
    {
        MeasureModel model;
        const QAbstractItemModelTester tester(&model);
        model.setMeasures(Nodes::MeasuresOf(figures()));
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex verdict = model.index(row, MeasureModel::Verdict);
            QCOMPARE(verdict.data(Qt::DecorationRole).isValid(),
                     !verdict.data().toString().isEmpty());
        }
    }

    void csvQuotesTexts()
    {
        const QByteArray text = HealthCsv::text(figures());
        QVERIFY(text.contains("\r\n\"Тревога \"\"11\"\"\",\"\",2,100,7,0,0,нет\r\n"));
        QVERIFY(text.contains("\"\",144,3,1,1,1\r\n")); // of no area
        const QByteArray series = text.mid(text.indexOf("Начало 10 минут"));
        QCOMPARE(series.count(",1\r\n"), 144); // a line for each ten minutes
    }

    void pageShowsTheJournal()
    {
        RuntimeProject project(station);
        qwidgetAlarmHealth element(project.node<Nodes::widgetAlarmHealth>(20), nullptr);
        element.start();
        QVERIFY(project.core.Start()); // after the page, which waits for it
        HealthPage *page = element.page();
        QTRY_VERIFY(page->figures());
        QCOMPARE(page->figures()->raised, std::uint64_t(0)); // an empty journal is told as such
        project.publish(10, 90.0);
        project.publish(12, 1.0);
        QTRY_COMPARE(project.node<Nodes::systemAlarming>(51)->GetActiveAlarms().size(),
                     std::size_t(2));
        QTRY_VERIFY(
            (project.core.GetJournal().Flush(), page->refresh(), page->figures()->raised == 2));
        QCOMPARE(page->figures()->perPriority[0], std::uint64_t(1));
        QCOMPARE(page->nuisances()->model()->rowCount(), 2);
        QVERIFY(page->rateTitle().endsWith("более 3, до менее 3"));
        page->showBreakdown(HealthPage::ByArea);
        QCOMPARE(page->breakdownBars().size(), std::size_t(1)); // both signals stand in one
        QVERIFY(page->breakdownBars()[0].figure.startsWith("2 (100"));
        page->showBreakdown(HealthPage::ByShift);
        QVERIFY(!page->breakdownBars().empty());
        QCOMPARE(page->breakdownBars()[0].name, QString("круглые сутки"));
        QVERIFY(page->breakdownBars()[0].figure.startsWith("2 (100"));
        page->nuisances()->select(Nodes::NodeLink(11));
        page->refresh();
        QTRY_VERIFY(!page->isBusy());
        const auto rows = page->nuisances()->table()->selectionModel()->selectedRows();
        QCOMPARE(rows.size(), 1); // a refresh keeps what was selected
        QCOMPARE(page->nuisances()->model()->alarmAt(rows[0].row())->alarm.GetNodeId(), 11UL);
        QVERIFY(project.core.Stop());
    }

    void whatIfTakesOver_data()
    {
        const Rows<bool> row("isAllowed");
        row("everybody may", true);
        row("nobody is logged in", false);
    }
    void whatIfTakesOver()
    {
        QFETCH(bool, isAllowed);
        QByteArray nodes = station;
        if (!isAllowed)
            nodes.replace(
                "<alarming",
                R"(<authentication id="90" name="A"><user id="91" name="U"/></authentication><alarming)");
        RuntimeProject project(nodes);
        QVERIFY(project.core.Start());
        auto *alarming = project.node<Nodes::systemAlarming>(51);
        for (const double value : {70.0, 81.0, 79.0, 81.0, 79.0, 81.0, 70.0})
            project.publish(10, value);
        QVERIFY(project.node<Nodes::systemArchiver>(52)->GetRecording()->Flush());
        const auto journalled = [&] {
            Nodes::JournalQuery query;
            query.types = {Nodes::TypeAlarmActive};
            std::vector<Nodes::BasicEvent> entries;
            return project.core.GetJournal().Flush() &&
                   project.core.GetJournal().Query(query, entries) && entries.size() == 3;
        };
        QTRY_VERIFY(journalled());
        const Nodes::NodeLink alarm(11);
        QVERIFY(WhatIfDialog::canOpen(alarm));
        QVERIFY(!WhatIfDialog::canOpen(Nodes::NodeLink(13))); // its signal is not archived

        WhatIfDialog dialog;
        const QAbstractItemModelTester tester(dialog.model());
        dialog.setAlarm(alarm);
        QTRY_VERIFY(!dialog.isBusy());
        const auto raised = [&](int row) {
            return dialog.model()->variants()[std::size_t(row)].figures->raised;
        };
        QCOMPARE(raised(TrialModel::JournalRow), std::uint64_t(3));
        QCOMPARE(raised(TrialModel::PresentRow), std::uint64_t(3));

        const int row = TrialModel::FirstVariantRow;
        Nodes::AlarmTuning wanted = alarming->GetTuning(alarm);
        wanted.deadband = 5;
        dialog.model()->setTuning(row, wanted);
        dialog.select(row);
        QVERIFY(!dialog.model()->isAcceptable(row)); // nobody knows yet what it would do
        dialog.accept();
        QCOMPARE(*alarming->GetTuning(alarm).deadband, 0.0);
        dialog.compute();
        QTRY_VERIFY(!dialog.isBusy());
        QCOMPARE(raised(row), std::uint64_t(1));
        QCOMPARE(dialog.model()->changesText(row), QString("Зона: 0 → 5"));
        dialog.accept();
        QCOMPARE(*alarming->GetTuning(alarm).deadband, isAllowed ? 5.0 : 0.0);
        QTRY_VERIFY(!dialog.isBusy());
        QVERIFY2(
            dialog.message().startsWith(isAllowed ? "Принято" : "Не принято: Недостаточно прав"),
            qPrintable(dialog.message()));
        QVERIFY(project.core.Stop());
    }

    void aJobThatWasReplacedIsNotHeardOf()
    {
        WorkerJob job;
        QStringList heard;
        std::atomic<bool> isFirstUp{false};
        job.start([&](const std::atomic<bool> &isCancelled, const WorkerJob::Progress &tell) {
            isFirstUp = true;
            tell(0.5);
            while (!isCancelled)
                std::this_thread::yield();
            return WorkerJob::Answer([&] { heard << "first"; });
        });
        QTRY_VERIFY(isFirstUp);
        job.start([&](const std::atomic<bool> &, const WorkerJob::Progress &) {
            return WorkerJob::Answer([&] { heard << "second"; });
        });
        QTRY_VERIFY(!job.isBusy());
        QCOMPARE(heard, QStringList("second"));
        job.start([&](const std::atomic<bool> &, const WorkerJob::Progress &) {
            return WorkerJob::Answer([&] { heard << "third"; });
        });
        job.cancel();
        QCoreApplication::processEvents();
        QCOMPARE(heard.size(), 1);
    }
};

QTEST_MAIN(TestAlarmHealth)
#include "tst_alarm_health.moc"
