#include "widgets/reports/display/qwidgetReportDisplay.h"

#include "nodes/reports/KnownHistory.h"
#include "support/LiveElement.h"
#include "support/Rows.h"
#include "widgets/charts/plots/WaitBox.h"
#include "widgets/reports/TemplateText.h"
#include "widgets/reports/data/ReportModelTable.h"
#include "widgets/reports/data/ReportSetup.h"
#include "widgets/reports/display/ReportChoiceStore.h"
#include "widgets/reports/display/ReportIntervalDialog.h"
#include "widgets/reports/display/ReportToolBar.h"

#include "nodes/archive/HistoryService.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/reports/BasicReport.h"
#include "nodes/reports/time/LocalCalendar.h"
#include "nodes/values/Clock.h"

#include <QAbstractItemModelTester>
#include <QAction>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

#include <lrpreviewreportwidget.h>
#include <lrreportengine.h>

#include <condition_variable>
#include <mutex>

using namespace Nodes;
using namespace Widgets;
using Element = qwidgetReportDisplay;

namespace {

constexpr int patience = 20000; // ms

/// Answers no sooner than it is told to.
class SlowHistory : public KnownHistory
{
public:
    SlowHistory() : KnownHistory({{1, 5}}) {}
    Result Read(HistoryColumnBuilder &into, const std::atomic<bool> &isCancelled) const override
    {
        std::unique_lock lock(m_mutex);
        while (!m_isOpen && !isCancelled)
            m_changed.wait_for(lock, std::chrono::milliseconds(10));
        return KnownHistory::Read(into, isCancelled);
    }
    void open()
    {
        const std::lock_guard lock(m_mutex);
        m_isOpen = true;
    }

private:
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    bool m_isOpen = false;
};

constexpr const char *project = R"(
    <memorySignal id="10" name="fast"/><memorySignal id="11" name="slow"/>
    <report id="20" name="Первый" template="@"><reportVariable id="21" name="plant" value="Завод"/>
        <reportSignal id="22" name="fast" signal="10" step="day"/>
        <reportSignal id="23" name="slow" signal="11" step="day"/></report>
    <report id="24" name="Второй" template="/nowhere/gone.lrxml"/>
    <report id="25" name="Без данных" template="@">
        <reportSignal id="26" name="slow" signal="10"/><reportSignal id="27" name="slow" signal="11"/>
    </report>
    <report id="28" name="Текст" template="@"/>
    <composition id="30" name="C"><layer id="31" name="L">
        <reportDisplay id="32" name="D" width="900" height="700" reports="20 24 25 28"/>
    </layer></composition>)";

} // namespace

class ReportDisplayTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void rendersOnceAllDataAreThere();
    void readingCanBeEnded();
    void nothingIsWaitedForWithoutReports();
    void reportsOfTextAlone();
    void namesUsedTwice();
    void anotherUserWhileHidden();
    void missingTemplateIsTold();
    void onlyASheetOutsideOfRuntime();
    void toolBarAsTold();
    void pathsOfTemplates_data();
    void pathsOfTemplates();
    void intervalsAreSteppedThrough();
    void choicesAreKept();

private:
    QByteArray nodes() const { return QByteArray(project).replace("@", m_template.toUtf8()); }
    QTemporaryDir m_directory;
    QString m_template;
};

void ReportDisplayTest::initTestCase()
{
    using namespace TemplateText;
    m_template = m_directory.filePath("first.lrxml");
    QFile file(m_template);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(report({page({band("ReportHeader", "h", 100, {item("$V{plant} $V{period}")}),
                             band("Data", "d", 60, {item("$D{slow.value}")},
                                  text("datasource", "slow"))})})
                   .toUtf8());
}

void ReportDisplayTest::rendersOnceAllDataAreThere()
{
    RuntimeProject p(nodes());
    const auto fast = std::make_shared<KnownHistory>(std::vector<KnownHistory::Sample>{{1, 7}});
    const auto slow = std::make_shared<SlowHistory>();
    QVERIFY(p.core.GetHistory().AddSource(10, fast));
    QVERIFY(p.core.GetHistory().AddSource(11, slow));
    Element element(p.node<widgetReportDisplay>(32), nullptr);
    QSignalSpy rendered(element.engine(), &LimeReport::ReportEngine::renderStarted);
    QStringList order;
    // Below the wait box's own loop.
    QTimer look;
    connect(&look, &QTimer::timeout, &element, [&] {
        const QList<ReportModelTable *> &models = element.models();
        if (models.size() != 2 || models[0]->table()->rows == 0)
            return;
        order << (element.isEnabled() ? "enabled" : "disabled") << QString::number(rendered.size());
        slow->open();
        look.stop();
    });
    look.start(20);
    element.start();
    QTRY_COMPARE_WITH_TIMEOUT(rendered.size(), 1, patience);
    QCOMPARE(order, QStringList({"disabled", "0"}));
    QTRY_COMPARE_WITH_TIMEOUT(element.preview()->pageCount(), 1, patience);
    QVERIFY(element.isEnabled());
    QCOMPARE(element.models()[1]->data(element.models()[1]->index(0, 2)).toDouble(), 5.0);
    QVERIFY(element.toolBar()->print->isEnabled());
    for (ReportModelTable *model : element.models())
        QAbstractItemModelTester(model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy again(element.engine(), &LimeReport::ReportEngine::renderFinished);
    element.toolBar()->generate->trigger();
    QTRY_COMPARE_WITH_TIMEOUT(again.size(), 1, patience);
    QCOMPARE(rendered.size(), 2);
}

void ReportDisplayTest::readingCanBeEnded()
{
    RuntimeProject p(nodes());
    const auto slow = std::make_shared<SlowHistory>();
    QVERIFY(p.core.GetHistory().AddSource(11, slow));
    Element element(p.node<widgetReportDisplay>(32), nullptr);
    QTimer end;
    connect(&end, &QTimer::timeout, &element, [&] {
        auto *box = element.findChild<WaitBox *>();
        if (box && box->isRunning())
            box->reject();
    });
    end.start(20);
    element.start();
    const auto *missing = element.findChild<QLabel *>("missing");
    QTRY_VERIFY_WITH_TIMEOUT(missing->text().contains("прервано"), patience);
    QVERIFY(element.isEnabled());
    QVERIFY(!element.toolBar()->print->isEnabled());
}

// Say when another user logs in who may view none.
void ReportDisplayTest::nothingIsWaitedForWithoutReports()
{
    RuntimeProject p(nodes());
    const auto slow = std::make_shared<SlowHistory>();
    QVERIFY(p.core.GetHistory().AddSource(11, slow));
    Element element(p.node<widgetReportDisplay>(32), nullptr);
    const auto *box = element.findChild<WaitBox *>();
    QTimer take;
    connect(&take, &QTimer::timeout, &element, [&] {
        if (!box->isRunning())
            return;
        take.stop();
        p.set(32, "reports", "999");
    });
    take.start(20);
    QTimer::singleShot(patience, &element, [&] { slow->open(); });
    element.start();
    const auto *missing = element.findChild<QLabel *>("missing");
    QTRY_VERIFY_WITH_TIMEOUT(missing->text().contains("Нет отчётов"), patience / 2);
    QTRY_VERIFY_WITH_TIMEOUT(!box->isRunning(), patience / 2);
    QVERIFY(element.isEnabled());
    QVERIFY(missing->text().contains("Нет отчётов"));
    slow->open();
}

void ReportDisplayTest::reportsOfTextAlone()
{
    RuntimeProject p(nodes());
    Element element(p.node<widgetReportDisplay>(32), nullptr);
    element.start();
    QTRY_COMPARE_WITH_TIMEOUT(element.preview()->pageCount(), 1, patience);
    QVERIFY(!element.engine()->lastError().contains("plant"));
    QSignalSpy rendered(element.engine(), &LimeReport::ReportEngine::renderFinished);
    element.toolBar()->reports->setCurrentIndex(3);
    QTRY_COMPARE_WITH_TIMEOUT(rendered.size(), 1, patience);
    QCOMPARE(element.preview()->pageCount(), 1);
    // The variable of the report before is not this one's.
    QVERIFY(element.engine()->lastError().contains("plant"));
}

void ReportDisplayTest::namesUsedTwice()
{
    RuntimeProject p(nodes());
    Element element(p.node<widgetReportDisplay>(32), nullptr);
    element.toolBar()->reports->setCurrentIndex(2);
    element.start();
    QTRY_COMPARE_WITH_TIMEOUT(element.preview()->pageCount(), 1, patience);
    QCOMPARE(element.models().size(), 1);
    element.toolBar()->generate->trigger();
    QTRY_COMPARE_WITH_TIMEOUT(element.preview()->pageCount(), 1, patience);
}

void ReportDisplayTest::anotherUserWhileHidden()
{
    RuntimeProject p(nodes() + R"(
        <authentication id="90" name="A" guestRole="92">
            <role id="92" name="Guest"><grant id="95" name="d" privileges="view" mode="deny"/></role>
            <role id="93" name="Engineer"><grant id="94" name="g" privileges="all"/></role>
            <user id="91" name="engineer" roles="93" passwordless="true"/>
        </authentication>)");
    QVERIFY(p.core.GetSystemAuthentication()->Authenticate(p.node(91)->GetNodeLink()));
    Element element(p.node<widgetReportDisplay>(32), nullptr);
    QSignalSpy rendered(element.engine(), &LimeReport::ReportEngine::renderFinished);
    element.start();
    QTRY_COMPARE_WITH_TIMEOUT(rendered.size(), 1, patience);
    element.stop();
    element.start(); // the same user: what was made stands
    QCOMPARE(element.models().isEmpty(), false);
    QVERIFY(element.preview()->pageCount() > 0);
    element.stop();
    p.core.GetSystemAuthentication()->Logout();
    element.start();
    const auto *missing = element.findChild<QLabel *>("missing");
    QTRY_VERIFY_WITH_TIMEOUT(missing->text().contains("Нет отчётов"), patience);
    QVERIFY(element.models().isEmpty());
}

void ReportDisplayTest::missingTemplateIsTold()
{
    RuntimeProject p(nodes());
    Element element(p.node<widgetReportDisplay>(32), nullptr);
    element.show();
    element.start();
    element.toolBar()->reports->setCurrentIndex(1);
    const auto *missing = element.findChild<QLabel *>("missing");
    QTRY_VERIFY(missing->isVisible());
    QVERIFY(missing->text().contains("gone.lrxml"));
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(element.preview()->pageCount(), 0);
    p.set(32, "reports", "999");
    QTRY_VERIFY(missing->text().contains("Нет отчётов"));
    QVERIFY(!element.toolBar()->generate->isEnabled());
}

void ReportDisplayTest::onlyASheetOutsideOfRuntime()
{
    RuntimeProject p(nodes(), WorkModeEditing);
    Element element(p.node<widgetReportDisplay>(32), nullptr);
    element.resize(400, 300);
    element.start();
    QVERIFY(!element.engine() && !element.preview());
    QCOMPARE(element.grab().toImage().pixelColor(200, 200), QColor(Qt::white));
}

void ReportDisplayTest::toolBarAsTold()
{
    RuntimeProject p(nodes());
    const Element element(p.node<widgetReportDisplay>(32), nullptr);
    QStringList texts;
    for (const QAction *action : element.toolBar()->actions()) {
        if (element.toolBar()->widgetForAction(const_cast<QAction *>(action)) ==
            element.toolBar()->reports)
            texts << "[reports]";
        else if (!action->text().isEmpty())
            texts << action->text();
        if (!action->text().isEmpty())
            QCOMPARE(action->toolTip(), action->text());
    }
    QCOMPARE(texts.mid(0, 9),
             QStringList({"Сформировать отчет", "[reports]", "hh.mm.ss - hh.mm.ss", "Печать отчета",
                          "Сохранение отчета в PDF", "Переход к предыдущему листу",
                          "Переход к следующему листу", "Масштабирование по ширине листа",
                          "Масштабирование по размеру листа"}));
    QCOMPARE(element.toolBar()->reports->itemText(1), QString("Второй"));
}

void ReportDisplayTest::pathsOfTemplates_data()
{
    const Rows<QString, QString> row("path", "file");
    row("relative", "reports/a.lrxml", "/projects/p/reports/a.lrxml");
    row("root", "/srv/a.lrxml", "/srv/a.lrxml");
    row("drive", "D:/a.lrxml", "D:/a.lrxml");
    row("small drive", "d:/a.lrxml", "/projects/p/d:/a.lrxml");
    row("none", "", "");
}

void ReportDisplayTest::pathsOfTemplates()
{
    QFETCH(QString, path);
    std::unique_ptr<NodesCollection> read;
    ProjectReader reader;
    const std::string xml =
        R"(<project format="1" id="1" name="P"><report id="20" name="R"/></project>)";
    QVERIFY(reader.ReadBuffer(xml, "test", read));
    systemCore core;
    core.AdoptProject(std::move(read), "/projects/p/project.xml");
    auto *report = dynamic_cast<BasicReport *>(core.GetNodesCollection()->FindNode(20));
    QVERIFY(report->SetPropertyText("template", path.toStdString()));
    QTEST(ReportSetup::templatePath(*report, core), "file");
}

void ReportDisplayTest::intervalsAreSteppedThrough()
{
    const Timestamp now = LocalCalendar::MomentOf({2026, 11, 22}, 10 * 3600);
    ReportIntervalDialog dialog;
    dialog.setChoice(ReportChoice(), now);
    const auto press = [&](const char *name) {
        dialog.findChild<QPushButton *>(name)->click();
        return dialog.findChild<QLabel *>("title")->text();
    };
    QCOMPARE(dialog.windowTitle(), QString("Интервал"));
    QVERIFY(!dialog.findChild<QPushButton *>("forward")->isEnabled()); // the future has no data
    QCOMPARE(press("back"), QString("Смена ночная, 21.11.2026 20:00 – 22.11.2026 08:00"));
    QVERIFY(!dialog.choice().isCurrent);
    QCOMPARE(press("forward"), QString("Смена дневная, 22.11.2026 08:00 – 20:00"));
    QVERIFY(dialog.choice().isCurrent);
    auto *period = dialog.findChild<QComboBox *>("period");
    const auto choose = [&](enReportPeriod chosen) {
        period->setCurrentIndex(period->findData(int(chosen)));
        emit period->activated(period->currentIndex());
    };
    choose(PeriodMonth);
    QCOMPARE(press("back"), QString("Месяц 10.2026"));
    choose(PeriodFree);
    QCOMPARE(dialog.choice().span, PeriodAt(PeriodMonth, now - 30 * Timestamp(86400000000), {}));
    auto *to = dialog.findChild<QDateTimeEdit *>("to");
    to->setDateTime(QDateTime(QDate(2026, 9, 1), QTime(0, 0)));
    QVERIFY(!dialog.findChild<QPushButton *>("ok")->isEnabled());
    to->setDateTime(QDateTime(QDate(2026, 10, 2), QTime(1, 30)));
    QVERIFY(dialog.findChild<QPushButton *>("ok")->isEnabled());
    QCOMPARE(dialog.choice().span.end, LocalCalendar::MomentOf({2026, 10, 2}, 5400));
}

void ReportDisplayTest::choicesAreKept()
{
    RuntimeProject p(nodes());
    const auto *report = p.node<BasicReport>(20);
    QVERIFY(!ReportChoiceStore(p.core).load(*report));
    ReportChoice free;
    free.period = PeriodFree;
    free.isCurrent = false;
    free.span = {1790000000000000, 1790000100000000};
    QVERIFY(ReportChoiceStore(p.core).save(*report, free));
    const std::optional<ReportChoice> kept = ReportChoiceStore(p.core).load(*report);
    QVERIFY(kept && kept->period == PeriodFree && kept->span == free.span);
    QVERIFY(!ReportChoiceStore(p.core).load(*p.node<BasicReport>(24)));
    free.period = PeriodMonth; // a month of the past comes back as the month of then
    QVERIFY(ReportChoiceStore(p.core).save(*report, free));
    QVERIFY(ReportChoiceStore(p.core).load(*report)->isCurrent);
}

QTEST_MAIN(ReportDisplayTest)
#include "tst_report_display.moc"
