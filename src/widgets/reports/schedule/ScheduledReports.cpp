#include "widgets/reports/schedule/ScheduledReports.h"

#include "widgets/reports/schedule/ReportFiling.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/reports/BasicReport.h"
#include "nodes/reports/schedule/reportSchedule.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

#include <QDir>

#include <algorithm>
#include <utility>

namespace Widgets {

namespace {

constexpr int tick = 5000; // ms
constexpr Nodes::Timestamp minute = Nodes::Timestamp(60) * 1000000;
constexpr int longestPause = 30; // minutes between two attempts

} // namespace

ScheduledReports::ScheduledReports(Nodes::systemCore &core, QObject *parent)
    : QObject(parent), m_core(core), m_ledger(core), m_filing(new ReportFiling(core, this))
{
    connect(m_filing, &ReportFiling::finished, this, &ScheduledReports::onFinished);
    connect(&m_ticks, &QTimer::timeout, this, &ScheduledReports::check);
    m_ticks.start(tick);
}

ScheduledReports::~ScheduledReports()
{
    m_cleaning.waitForDone();
}

bool ScheduledReports::isBusy() const
{
    return m_filing->isRunning();
}

void ScheduledReports::check()
{
    const Nodes::NodesCollection *project = m_core.GetNodesCollection();
    if (isBusy() || !project)
        return;
    Nodes::NodeLinks schedules;
    project->FindNodes(Nodes::NodeType(Nodes::reportSchedule::Code), &schedules);
    const Nodes::Timestamp now = Nodes::Clock::Current().Now();
    for (const Nodes::NodeLink &link : schedules) {
        auto *schedule = dynamic_cast<Nodes::reportSchedule *>(link.GetNode());
        const bool isOurs = schedule && schedule->IsLocal() && schedule->IsEnabled();
        if (isOurs && m_troubles.value(schedule->GetId()).retryAt <= now &&
            startDue(*schedule, now))
            return;
    }
}

bool ScheduledReports::startDue(Nodes::reportSchedule &schedule, Nodes::Timestamp now)
{
    ReportLedger::Account account = m_ledger.load(schedule);
    const Nodes::ShiftPlan shifts = Nodes::shiftTable::PlanOf(m_core.GetNodesCollection());
    if (account.done == 0) {
        account.done = now - schedule.GetDelay();
        (void)m_ledger.save(schedule, account); // what failed is in the log
        return false;
    }
    if (account.done > now) {
        // What was made by a clock that was ahead cannot have been of whole periods.
        tellClock(schedule);
        account.done = now - schedule.GetDelay();
        (void)m_ledger.save(schedule, account);
        return false;
    }
    int skipped = 0;
    const std::vector<Nodes::ReportSpan> due = schedule.FindDue(account.done, now, shifts, skipped);
    if (due.empty() && skipped == 0)
        return false;
    if (skipped > 0) {
        tellSkipped(schedule, skipped);
        account.done = due.empty() ? now - schedule.GetDelay() : due.front().begin;
        (void)m_ledger.save(schedule, account);
    }
    if (due.empty())
        return false;
    m_schedule = schedule.GetNodeLink();
    m_span = due.front();
    m_filing->start(ReportJob::of(schedule, m_span, shifts));
    return true;
}

void ScheduledReports::tellSkipped(const Nodes::reportSchedule &schedule, int skipped) const
{
    const QString text =
        QStringLiteral("Отчёты по расписанию «%1»: пропущено %2, пока станция не работала; они не "
                       "составляются. Их можно составить на странице отчётов.")
            .arg(QString::fromStdString(schedule.GetName()))
            .arg(skipped);
    (void)schedule.StoreMessage(Nodes::LevelWarning, text.toStdString(), schedule.GetNodeLink());
}

void ScheduledReports::tellClock(const Nodes::reportSchedule &schedule) const
{
    const QString text =
        QStringLiteral(
            "Часы станции переведены назад: отчёты по расписанию «%1» составляются заново "
            "с текущего периода.")
            .arg(QString::fromStdString(schedule.GetName()));
    (void)schedule.StoreMessage(Nodes::LevelWarning, text.toStdString(), schedule.GetNodeLink());
}

QString ScheduledReports::titleOf(const Nodes::reportSchedule &schedule) const
{
    const Nodes::BasicReport *report = schedule.GetReport();
    const Nodes::ShiftPlan shifts = Nodes::shiftTable::PlanOf(m_core.GetNodesCollection());
    const std::string &name = report ? report->GetName() : schedule.GetName();
    return QStringLiteral("«%1» (%2)")
        .arg(QString::fromStdString(name),
             QString::fromStdString(Nodes::PeriodTitle(schedule.GetPeriod(), m_span, shifts)));
}

void ScheduledReports::onFinished(const QStringList &files, const QString &error,
                                  const QString &faults)
{
    const auto *schedule = dynamic_cast<const Nodes::reportSchedule *>(m_schedule.GetNode());
    if (schedule && error.isEmpty())
        onMade(*schedule, files, faults);
    else if (schedule)
        onFailed(*schedule, error);
    emit finished();
}

void ScheduledReports::onMade(const Nodes::reportSchedule &schedule, const QStringList &files,
                              const QString &faults)
{
    const Nodes::Timestamp now = Nodes::Clock::Current().Now();
    const bool isLate = now > m_span.end + schedule.GetDelay() + Nodes::reportSchedule::Punctual;
    m_troubles.remove(schedule.GetId());
    ReportLedger::Account account = m_ledger.load(schedule);
    account.done = m_span.end;
    for (const QString &file : files)
        account.files.append({file, now});
    const QStringList outdated = ReportLedger::takeOutdated(schedule, now, account);
    const Nodes::Result kept = m_ledger.save(schedule, account);
    m_cleaning.start([outdated] { (void)ReportFolder::remove(outdated); });
    QString text = QStringLiteral("Отчёт %1 составлен%2: %3")
                       .arg(titleOf(schedule), isLate ? QStringLiteral(" с опозданием") : QString(),
                            QDir::toNativeSeparators(files.join(QStringLiteral(", "))));
    if (!faults.isEmpty())
        text += QStringLiteral(". Неполные данные: ") + faults;
    if (!kept)
        text += QStringLiteral(". Учёт отчётов не записан: отчёт может повториться.");
    (void)schedule.StoreMessage(faults.isEmpty() && kept ? Nodes::LevelInformation
                                                         : Nodes::LevelWarning,
                                text.toStdString(), schedule.GetNodeLink());
}

// The same trouble is told once; it is tried again after one, two, four... minutes.
void ScheduledReports::onFailed(const Nodes::reportSchedule &schedule, const QString &error)
{
    Trouble &trouble = m_troubles[schedule.GetId()];
    const int pause = std::min(1 << std::min(trouble.failures, 8), longestPause);
    ++trouble.failures;
    trouble.retryAt = Nodes::Clock::Current().Now() + pause * minute;
    if (std::exchange(trouble.error, error) == error)
        return;
    const QString text = QStringLiteral("Отчёт %1 не составлен: %2 Попытки повторяются.")
                             .arg(titleOf(schedule), error);
    (void)schedule.StoreMessage(Nodes::LevelWarning, text.toStdString(), schedule.GetNodeLink());
}

} // namespace Widgets
