#include "widgets/reports/data/ReportSetup.h"

#include "widgets/reports/data/ReportModelTable.h"

#include "nodes/auth/ActingUser.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/reports/data/BasicReportSource.h"
#include "nodes/reports/time/LocalCalendar.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/system/BasicStation.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

#include <QDir>
#include <QRegularExpression>
#include <QStringList>

#include <lrdatasourcemanagerintf.h>
#include <lrreportengine.h>

namespace Widgets {

namespace {

QString userName(const Nodes::systemCore &core)
{
    const Nodes::systemAuthentication *users = core.GetSystemAuthentication();
    const Nodes::ActingUser *acting = users ? Nodes::ActingScope::Of(*users) : nullptr;
    const Nodes::NodeLink link = acting  ? acting->user
                                 : users ? users->GetCurrentUser()
                                         : Nodes::NodeLink();
    const Nodes::ConfigNode *user = link.GetNode();
    if (!user)
        return {};
    const std::string &name = user->GetDescription();
    return QString::fromStdString(name.empty() ? user->GetName() : name);
}

QString faultText(const Nodes::Result &result)
{
    switch (result.GetType()) {
    case Nodes::Result::LimitExceeded:
        return QStringLiteral("показаны не все строки: их слишком много");
    case Nodes::Result::AccessDenied:
        return QStringLiteral("часть сигналов недоступна пользователю");
    case Nodes::Result::NotFound:
        return QStringLiteral("сигнал удалён из проекта");
    case Nodes::Result::NotAvailable:
        return QStringLiteral("для части данных нет архива");
    case Nodes::Result::Cancelled:
        return QStringLiteral("чтение прервано");
    default:
        return QString::fromStdString(result.GetResultTranslated());
    }
}

} // namespace

QString ReportSetup::templatePath(const Nodes::BasicReport &report, const Nodes::systemCore &core)
{
    static const QRegularExpression drive(QStringLiteral("^[A-Z]:/"));
    static const QRegularExpression root(QStringLiteral("^/"));
    const QString path = QString::fromStdString(report.GetFilePath());
    if (path.isEmpty() || drive.match(path).hasMatch() || root.match(path).hasMatch())
        return path;
    return QDir(QString::fromStdString(core.GetProjectPath())).filePath(path);
}

void ReportSetup::setVariables(LimeReport::ReportEngine &engine, const Nodes::BasicReport &report,
                               const Nodes::systemCore &core, Nodes::enReportPeriod period,
                               const Nodes::ReportSpan &span,
                               const Nodes::BasicReport::Variables &given)
{
    const Nodes::ShiftPlan shifts = Nodes::shiftTable::PlanOf(core.GetNodesCollection());
    const Nodes::Timestamp now = Nodes::Clock::Current().Now();
    const Nodes::BasicStation *station = core.GetLocalStation();
    const std::pair<const char *, std::string> told[] = {
        {"report", report.GetName()},
        {"interval", Nodes::ReportIntervalText(span)},
        {"period", Nodes::PeriodTitle(period, span, shifts)},
        {"from", Nodes::LocalCalendar::Text(span.begin, "%d.%m.%Y %H:%M")},
        {"to", Nodes::LocalCalendar::Text(span.end, "%d.%m.%Y %H:%M")},
        {"made", Nodes::LocalCalendar::Text(now, "%d.%m.%Y %H:%M:%S")},
        {"unfinished", now < span.end ? "Период не завершён: данные на " +
                                            Nodes::LocalCalendar::Text(now, "%d.%m.%Y %H:%M")
                                      : std::string()},
        {"station", station ? station->GetName() : std::string()},
        {"user", userName(core).toStdString()}};
    LimeReport::IDataSourceManager *manager = engine.dataManager();
    manager->clearUserVariables(); // of the report before
    for (const auto &[name, value] : told)
        manager->setReportVariable(QLatin1String(name), QString::fromStdString(value));
    for (const auto &variables : {report.GetVariables(), given})
        for (const auto &[name, value] : variables)
            manager->setReportVariable(QString::fromStdString(name), QString::fromStdString(value));
}

QList<ReportModelTable *> ReportSetup::addModels(LimeReport::ReportEngine &engine,
                                                 const Nodes::BasicReport &report,
                                                 QThreadPool *pool)
{
    QList<ReportModelTable *> models;
    QStringList names;
    for (const Nodes::BasicReportSource *source : report.GetSources()) {
        const QString name = QString::fromStdString(source->GetName());
        if (names.contains(name))
            continue; // the project check tells; a second one would replace the first
        names << name;
        auto *model = new ReportModelTable(source, &engine, pool);
        model->setObjectName(name);
        if (engine.dataManager()->addModel(model->objectName(), model, true))
            models << model;
        else
            delete model;
    }
    return models;
}

QString ReportSetup::faults(const QList<ReportModelTable *> &models)
{
    QStringList found;
    for (const ReportModelTable *model : models) {
        const Nodes::Result &result = model->table()->result;
        if (!result)
            found << QStringLiteral("%1: %2").arg(model->objectName(), faultText(result));
    }
    return found.join(QStringLiteral("; "));
}

ExportSheets ReportSetup::sheets(const QList<ReportModelTable *> &models)
{
    ExportSheets all;
    for (const ReportModelTable *model : models)
        all.append({model->objectName(), model->sharedRows()});
    return all;
}

} // namespace Widgets
