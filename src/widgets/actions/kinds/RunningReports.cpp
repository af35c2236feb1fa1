#include "widgets/actions/kinds/RunningReports.h"

#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/actions/running/ActionTeller.h"
#include "widgets/actions/running/Refusals.h"
#include "widgets/reports/schedule/ReportFiling.h"
#include "widgets/windows/DesktopContext.h"

#include "nodes/actions/kinds/actionReport.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

#include <QDir>

#include <utility>

namespace Widgets {

namespace {

ReportJob jobOf(const Nodes::actionReport &node, const Nodes::systemCore &core,
                const ActionTrigger &trigger)
{
    const Nodes::ShiftPlan shifts = Nodes::shiftTable::PlanOf(core.GetNodesCollection());
    const Nodes::systemAuthentication *users = core.GetSystemAuthentication();
    ReportJob job;
    job.report = node.GetReport()->GetNodeLink();
    job.period = node.GetPeriod();
    job.span = node.SpanAt(Nodes::Clock::Current().Now(), shifts);
    job.variables = node.GetVariables();
    job.user = trigger.user ? *trigger.user : users ? users->GetActingUser() : Nodes::ActingUser();
    job.name = QString::fromStdString(node.FileNameOf(job.span, shifts));
    job.format = node.GetFormat();
    job.isPrinted = node.GetCommand() == Nodes::actionReport::CommandPrint;
    if (!job.isPrinted) {
        job.setFolder(node);
        return job;
    }
    std::string printer;
    if (const Nodes::Result named = core.Expand(node.GetPrinter(), printer); !named)
        job.error = QStringLiteral("принтер не задан (%1). Его имя задают при запуске станции.")
                        .arg(QString::fromStdString(named.GetDetail()));
    job.printer = QString::fromStdString(printer);
    return job;
}

QString titleOf(const Nodes::actionReport &node, const ReportJob &job,
                const Nodes::systemCore &core)
{
    const Nodes::ShiftPlan shifts = Nodes::shiftTable::PlanOf(core.GetNodesCollection());
    return QStringLiteral("«%1» (%2)")
        .arg(QString::fromStdString(node.GetReport()->GetName()),
             QString::fromStdString(Nodes::PeriodTitle(job.period, job.span, shifts)));
}

} // namespace

RunningReports &RunningReports::of(ActionDispatcher &actions)
{
    auto *made = actions.findChild<RunningReports *>(QString(), Qt::FindDirectChildrenOnly);
    return made ? *made : *new RunningReports(actions);
}

RunningReports::RunningReports(ActionDispatcher &actions) : QObject(&actions)
{
    actions.track(*this);
}

RunningReports::~RunningReports() = default;

void RunningReports::run(const Nodes::actionReport &node, const ActionTrigger &trigger)
{
    const Nodes::systemCore *core = node.GetCore();
    const unsigned long action = node.GetId();
    if (!core)
        return;
    if (m_running.count(action) > 0)
        return ShowActionError(QStringLiteral("Отчёт «%1» ещё составляется.")
                                   .arg(QString::fromStdString(node.GetReport()->GetName())),
                               trigger);
    const ReportJob job = jobOf(node, *core, trigger);
    auto filing = std::make_unique<ReportFiling>(*core);
    // Queued: it is not to go while it tells.
    connect(
        filing.get(), &ReportFiling::finished, this,
        [this, action](const QStringList &files, const QString &error, const QString &faults) {
            onFinished(action, files, error, faults);
        },
        Qt::QueuedConnection);
    filing->start(job);
    m_running.insert(
        {action, Running{ActionJournal(node, trigger), trigger, titleOf(node, job, *core),
                         job.isPrinted, job.printer, std::move(filing)}});
}

void RunningReports::onFinished(unsigned long action, const QStringList &files,
                                const QString &error, const QString &faults)
{
    const auto found = m_running.find(action);
    if (found == m_running.end())
        return;
    const Running done = std::move(found->second);
    m_running.erase(found);
    if (!error.isEmpty()) {
        const QString text =
            QStringLiteral("Отчёт %1 не %2: %3")
                .arg(done.title,
                     done.isPrinted ? QStringLiteral("напечатан") : QStringLiteral("сохранён"),
                     error);
        done.journal.write(Nodes::LevelWarning, text.toStdString());
        return ShowActionError(text, done.trigger);
    }
    QString text = QStringLiteral("Отчёт %1 сохранён: %2")
                       .arg(done.title, QDir::toNativeSeparators(files.join(QStringLiteral(", "))));
    if (done.isPrinted)
        text = QStringLiteral("Отчёт %1 отправлен на %2")
                   .arg(done.title, done.printer.isEmpty()
                                        ? QStringLiteral("принтер по умолчанию")
                                        : QStringLiteral("принтер «%1»").arg(done.printer));
    if (!faults.isEmpty())
        text += QStringLiteral(". Неполные данные: ") + faults;
    done.journal.write(faults.isEmpty() ? Nodes::LevelAction : Nodes::LevelWarning,
                       text.toStdString());
    if (done.trigger.isOperators() && !DesktopContext::isStationEnding())
        ActionTeller::instance().notify(QStringLiteral("Отчёт"), text, done.trigger.display,
                                        QMessageBox::Information);
}

void RunningReports::abandon()
{
    for (const auto &[action, running] : std::exchange(m_running, {}))
        running.journal.write(Nodes::LevelWarning,
                              QStringLiteral("Отчёт %1 не закончен: станция завершается")
                                  .arg(running.title)
                                  .toStdString());
}

} // namespace Widgets
