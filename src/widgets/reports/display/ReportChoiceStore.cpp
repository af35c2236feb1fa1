#include "widgets/reports/display/ReportChoiceStore.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/reports/BasicReport.h"
#include "nodes/system/systemCore.h"

#include <QDir>

namespace Widgets {

namespace {

const QString periodKey = QStringLiteral("period");
const QString beginKey = QStringLiteral("begin");
const QString endKey = QStringLiteral("end");

QString fileOf(const Nodes::systemCore &model)
{
    return QDir(QString::fromStdString(model.GetDataDirectory()))
        .filePath(QStringLiteral("config.json"));
}

QString keyOf(const Nodes::BasicReport &report)
{
    return QString::number(report.GetId());
}

} // namespace

ReportChoiceStore::ReportChoiceStore(const Nodes::systemCore &model)
    : Configurator(QStringLiteral("Reports"), fileOf(model))
{
    const Nodes::systemAuthentication *users = model.GetSystemAuthentication();
    const Nodes::NodesCollection *project = model.GetNodesCollection();
    m_owner = QStringLiteral("%1/%2")
                  .arg(project ? QString::fromStdString(project->GetUuid()) : QString())
                  .arg(users ? users->GetCurrentUser().GetNodeId() : 0);
}

std::optional<ReportChoice> ReportChoiceStore::load(const Nodes::BasicReport &report) const
{
    QJsonObject settings;
    (void)Configurator::load(settings); // what was wrong is in the log
    const QJsonObject kept = settings.value(m_owner).toObject().value(keyOf(report)).toObject();
    const int period = kept.value(periodKey).toInt();
    if (period < Nodes::PeriodShift || period > Nodes::PeriodFree)
        return std::nullopt;
    ReportChoice choice;
    choice.period = Nodes::enReportPeriod(period);
    if (period != Nodes::PeriodFree)
        return choice;
    // Microseconds of this age fit into the 53 bits of a number of JSON.
    choice.span = {Nodes::Timestamp(kept.value(beginKey).toDouble()),
                   Nodes::Timestamp(kept.value(endKey).toDouble())};
    choice.isCurrent = false;
    return choice.span.IsEmpty() ? std::nullopt : std::make_optional(choice);
}

Nodes::Result ReportChoiceStore::save(const Nodes::BasicReport &report,
                                      const ReportChoice &choice) const
{
    QJsonObject settings;
    (void)Configurator::load(settings); // a damaged file is set aside, and begun anew
    QJsonObject kept{{periodKey, int(choice.period)}};
    if (choice.period == Nodes::PeriodFree) {
        kept.insert(beginKey, double(choice.span.begin));
        kept.insert(endKey, double(choice.span.end));
    }
    QJsonObject reports = settings.value(m_owner).toObject();
    reports.insert(keyOf(report), kept);
    settings.insert(m_owner, reports);
    return Configurator::save(settings);
}

} // namespace Widgets
