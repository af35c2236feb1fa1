#include "widgets/reports/schedule/ReportLedger.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/reports/schedule/reportSchedule.h"
#include "nodes/system/systemCore.h"

#include <QDir>
#include <QJsonArray>

namespace Widgets {

namespace {

constexpr Nodes::Timestamp day = Nodes::Timestamp(86400) * 1000000;
const QString doneKey = QStringLiteral("done");
const QString filesKey = QStringLiteral("files");
const QString nameKey = QStringLiteral("name");
const QString madeKey = QStringLiteral("made");

QString keyOf(const QString &project, const Nodes::reportSchedule &schedule)
{
    return QStringLiteral("%1/%2").arg(project).arg(schedule.GetId());
}

} // namespace

ReportLedger::ReportLedger(const Nodes::systemCore &core)
    : Configurator(QStringLiteral("ReportSchedules"),
                   QDir(QString::fromStdString(core.GetDataDirectory()))
                       .filePath(QStringLiteral("report-schedules.json")))
{
    const Nodes::NodesCollection *project = core.GetNodesCollection();
    m_project = project ? QString::fromStdString(project->GetUuid()) : QString();
}

ReportLedger::Account ReportLedger::load(const Nodes::reportSchedule &schedule) const
{
    QJsonObject settings;
    (void)Configurator::load(settings); // what was wrong is in the log
    const QJsonObject kept = settings.value(keyOf(m_project, schedule)).toObject();
    Account account;
    account.done = Nodes::Timestamp(kept.value(doneKey).toDouble());
    const QJsonArray files = kept.value(filesKey).toArray();
    for (const QJsonValue &file : files)
        account.files.append({file.toObject().value(nameKey).toString(),
                              Nodes::Timestamp(file.toObject().value(madeKey).toDouble())});
    return account;
}

Nodes::Result ReportLedger::save(const Nodes::reportSchedule &schedule,
                                 const Account &account) const
{
    QJsonObject settings;
    (void)Configurator::load(settings); // a damaged file is set aside, and begun anew
    QJsonArray files;
    for (const File &file : account.files)
        files.append(QJsonObject{{nameKey, file.name}, {madeKey, double(file.made)}});
    settings.insert(keyOf(m_project, schedule),
                    QJsonObject{{doneKey, double(account.done)}, {filesKey, files}});
    return Configurator::save(settings);
}

QStringList ReportLedger::takeOutdated(const Nodes::reportSchedule &schedule, Nodes::Timestamp now,
                                       Account &account)
{
    QStringList outdated;
    const auto takeFirst = [&] { outdated << account.files.takeFirst().name; };
    while (schedule.GetKeepCount() > 0 && account.files.size() > schedule.GetKeepCount())
        takeFirst();
    while (schedule.GetKeepDays() > 0 && !account.files.isEmpty() &&
           account.files.first().made < now - schedule.GetKeepDays() * day)
        takeFirst();
    return outdated;
}

} // namespace Widgets
