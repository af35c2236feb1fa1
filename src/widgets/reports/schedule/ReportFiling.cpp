#include "widgets/reports/schedule/ReportFiling.h"

#include "widgets/reports/data/ReportModelTable.h"
#include "widgets/reports/data/ReportSetup.h"
#include "widgets/reports/export/DataExport.h"
#include "widgets/reports/printing/PrintCommand.h"

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
    m_print = new PrintCommand(this);
    connect(m_print, &PrintCommand::finished, this, &ReportFiling::onPrinted);
}

ReportFiling::~ReportFiling()
{
    m_engine.reset();
    m_pool.clear();
    m_pool.waitForDone();
    if (m_job.isPrinted && !m_file.isEmpty())
        ReportFolder::removeTemporary(m_file);
}

void ReportFiling::start(const ReportJob &job)
{
    m_isRunning = true;
    m_job = job;
    m_file.clear();
    m_models.clear();
    m_engine.reset();
    if (!job.error.isEmpty()) {
        m_placed.inlet()({{}, job.error});
        return;
    }
    m_pool.start([inlet = m_placed.inlet(), job] {
        const QString ending = job.isPrinted ? QStringLiteral("pdf") : endingOf(job.format);
        inlet(job.isPrinted ? ReportFolder::prepareTemporary(job.name, ending)
                            : ReportFolder::prepare(job.folder, job.name, ending));
    });
}

void ReportFiling::onPlaced(const ReportFolder::Place &place)
{
    if (!place.error.isEmpty())
        return end({}, place.error);
    m_file = place.file;
    // Only while nothing waits: whoever acts is not to lend the rights to others.
    std::optional<Nodes::ActingScope> acting;
    if (m_job.user)
        acting.emplace(*m_job.user);
    if (load())
        readData();
}

void ReportFiling::readData()
{
    Nodes::ReportOrder order;
    order.core = &m_core;
    order.span = m_job.span;
    order.shifts = Nodes::shiftTable::PlanOf(m_core.GetNodesCollection());
    order.reader = m_job.user ? Nodes::HistoryReader::CurrentUser : Nodes::HistoryReader::Station;
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
    const auto *report = dynamic_cast<const Nodes::BasicReport *>(m_job.report.GetNode());
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
    ReportSetup::setVariables(*m_engine, *report, m_core, m_job.period, m_job.span,
                              m_job.variables);
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
    if (m_job.isPrinted || m_job.format == Nodes::reportSchedule::FormatPdf) {
        if (!m_engine->startPdf(m_file))
            end({}, m_engine->lastError());
        return;
    }
    const bool isXlsx = m_job.format == Nodes::reportSchedule::FormatXlsx;
    m_export->start(m_file, isXlsx ? DataExport::Format::Xlsx : DataExport::Format::Csv,
                    ReportSetup::sheets(m_models));
}

void ReportFiling::onSaved(const QString &file, const QString &error)
{
    if (!m_isRunning)
        return;
    if (m_job.isPrinted && error.isEmpty())
        m_print->start(file, m_job.printer, m_job.name);
    else
        end(error.isEmpty() ? QStringList{file} : QStringList(), error);
}

void ReportFiling::onPrinted(const QString &error)
{
    if (m_isRunning)
        end({}, error);
}

void ReportFiling::end(const QStringList &files, const QString &error)
{
    m_isRunning = false;
    // The file stays known: who is deleted in answer to finished() drops what the pool has not
    // begun.
    if (m_job.isPrinted && !m_file.isEmpty())
        m_pool.start([file = m_file] { ReportFolder::removeTemporary(file); });
    QStringList faults{ReportSetup::faults(m_models)};
    if (m_engine && error.isEmpty())
        faults << m_engine->lastError().split(QLatin1Char('\n'));
    faults.removeAll(QString());
    emit finished(files, error, faults.mid(0, mostFaults).join(QStringLiteral("; ")));
}

} // namespace Widgets
