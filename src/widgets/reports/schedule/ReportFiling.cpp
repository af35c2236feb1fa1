#include "widgets/reports/schedule/ReportFiling.h"

#include "widgets/reports/data/ReportModelTable.h"
#include "widgets/reports/data/ReportSetup.h"
#include "widgets/reports/export/DataExport.h"

#include "nodes/reports/BasicReport.h"
#include "nodes/reports/data/ReportQuestion.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

#include <lrreportengine.h>

namespace Widgets {

namespace {

constexpr int readers = 1;    // operators who look at something go first
constexpr int mostFaults = 5; // told in the journal

QString endingOf(Nodes::reportSchedule::enReportFormat format)
{
    switch (format) {
    case Nodes::reportSchedule::FormatCsv:
        return QStringLiteral("csv");
    case Nodes::reportSchedule::FormatXlsx:
        return QStringLiteral("xlsx");
    case Nodes::reportSchedule::FormatPdf:
        break;
    }
    return QStringLiteral("pdf");
}

Nodes::reportSchedule *scheduleOf(const Nodes::NodeLink &link)
{
    return dynamic_cast<Nodes::reportSchedule *>(link.GetNode());
}

} // namespace

ReportFiling::ReportFiling(const Nodes::systemCore &core, QObject *parent)
    : QObject(parent),
      m_core(core),
      m_placed([this](const std::vector<ReportFolder::Place> &places) { onPlaced(places.back()); })
{
    m_pool.setMaxThreadCount(readers);
    m_export = new DataExport(this);
    connect(m_export, &DataExport::finished, this, [this](const QString &error) {
        if (m_isRunning)
            end(error.isEmpty() ? m_export->files() : QStringList(), error);
    });
}

ReportFiling::~ReportFiling()
{
    m_engine.reset();
    m_pool.clear();
    m_pool.waitForDone();
}

void ReportFiling::start(const Nodes::reportSchedule &schedule, const Nodes::ReportSpan &span)
{
    m_isRunning = true;
    m_schedule = schedule.GetNodeLink();
    m_span = span;
    m_file.clear();
    m_models.clear();
    m_engine.reset();
    std::string folder;
    const Nodes::Result found = schedule.FindFolder(folder);
    if (!found) {
        m_placed.inlet()({{},
                          QStringLiteral("Папка отчётов не годится (%1). Она должна лежать внутри "
                                         "каталога отчётов станции.")
                              .arg(QString::fromStdString(found.GetDetail()))});
        return;
    }
    const Nodes::ShiftPlan shifts = Nodes::shiftTable::PlanOf(m_core.GetNodesCollection());
    const QString name = QString::fromStdString(schedule.FileNameOf(span, shifts));
    const QString ending = endingOf(schedule.GetFormat());
    m_pool.start([inlet = m_placed.inlet(), directory = QString::fromStdString(folder), name,
                  ending] { inlet(ReportFolder::prepare(directory, name, ending)); });
}

void ReportFiling::onPlaced(const ReportFolder::Place &place)
{
    if (!place.error.isEmpty())
        return end({}, place.error);
    m_file = place.file;
    if (!load())
        return;
    Nodes::ReportOrder order;
    order.core = &m_core;
    order.span = m_span;
    order.shifts = Nodes::shiftTable::PlanOf(m_core.GetNodesCollection());
    order.reader = Nodes::HistoryReader::Station;
    order.now = Nodes::Clock::Current().Now();
    m_pending = m_models.size();
    for (ReportModelTable *model : qAsConst(m_models)) {
        connect(model, &ReportModelTable::dataUpdated, this, &ReportFiling::onDataUpdated);
        model->fetch(order);
    }
    if (m_models.isEmpty())
        write();
}

bool ReportFiling::load()
{
    const Nodes::reportSchedule *schedule = scheduleOf(m_schedule);
    const Nodes::BasicReport *report = schedule ? schedule->GetReport() : nullptr;
    if (!report) {
        end({}, QStringLiteral("Отчёт удалён из проекта."));
        return false;
    }
    m_engine = std::make_unique<LimeReport::ReportEngine>();
    m_engine->setShowProgressDialog(false);
    connect(m_engine.get(), &LimeReport::ReportEngine::saved, this, &ReportFiling::onSaved);
    const QString path = ReportSetup::templatePath(*report, m_core);
    if (!m_engine->loadFromFile(path)) {
        end({},
            QStringLiteral("Шаблон отчёта «%1» не читается: %2.").arg(path, m_engine->lastError()));
        return false;
    }
    ReportSetup::setVariables(*m_engine, *report, m_core, schedule->GetPeriod(), m_span);
    m_models = ReportSetup::addModels(*m_engine, *report, &m_pool);
    return true;
}

void ReportFiling::onDataUpdated()
{
    if (--m_pending == 0)
        write();
}

void ReportFiling::write()
{
    const Nodes::reportSchedule *schedule = scheduleOf(m_schedule);
    if (!schedule)
        return end({}, QStringLiteral("Расписание отчёта удалено из проекта."));
    if (schedule->GetFormat() == Nodes::reportSchedule::FormatPdf) {
        if (!m_engine->startPdf(m_file))
            end({}, m_engine->lastError());
        return;
    }
    const bool isXlsx = schedule->GetFormat() == Nodes::reportSchedule::FormatXlsx;
    m_export->start(m_file, isXlsx ? DataExport::Format::Xlsx : DataExport::Format::Csv,
                    ReportSetup::sheets(m_models));
}

void ReportFiling::onSaved(const QString &file, const QString &error)
{
    if (m_isRunning)
        end(error.isEmpty() ? QStringList{file} : QStringList(), error);
}

void ReportFiling::end(const QStringList &files, const QString &error)
{
    m_isRunning = false;
    QStringList faults{ReportSetup::faults(m_models)};
    if (m_engine && error.isEmpty())
        faults << m_engine->lastError().split(QLatin1Char('\n'));
    faults.removeAll(QString());
    emit finished(files, error, faults.mid(0, mostFaults).join(QStringLiteral("; ")));
}

} // namespace Widgets
