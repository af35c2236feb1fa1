#include "widgets/reports/engine/lrreportengine.h"

#include "widgets/reports/engine/lrpreviewreportwidget.h"
#include "widgets/reports/engine/template/TemplateReader.h"

namespace LimeReport {

class ReportEnginePrivate
{
public:
    static PreviewReportWidget *preview(QWidget *parent) { return new PreviewReportWidget(parent); }

    ReportTemplatePtr report;
    QString error;
    bool showsProgress = true;
};

ReportEngine::ReportEngine(QObject *parent)
    : QObject(parent), d(std::make_unique<ReportEnginePrivate>())
{
}

ReportEngine::~ReportEngine() = default;

bool ReportEngine::loadFromFile(const QString &file, bool reload)
{
    d->error.clear();
    d->report = TemplateReader::readFile(file, d->error);
    return d->report != nullptr;
}

bool ReportEngine::loadFromString(const QString &report, const QString &name)
{
    d->error.clear();
    d->report = TemplateReader::read(report.toUtf8(), name, QString(), d->error);
    return d->report != nullptr;
}

IDataSourceManager *ReportEngine::dataManager()
{
    return nullptr;
}

PreviewReportWidget *ReportEngine::createPreviewWidget(QWidget *parent)
{
    return ReportEnginePrivate::preview(parent);
}

bool ReportEngine::printReport(QPrinter *printer)
{
    d->error = QStringLiteral("Pages are not made yet.");
    return false;
}

bool ReportEngine::printToPDF(const QString &file)
{
    return printReport();
}

bool ReportEngine::startPdf(const QString &file)
{
    return printReport();
}

bool ReportEngine::render()
{
    return printReport();
}

bool ReportEngine::isRendering() const
{
    return false;
}

int ReportEngine::pageCount() const
{
    return 0;
}

QString ReportEngine::lastError() const
{
    return d->error;
}

void ReportEngine::setShowProgressDialog(bool show)
{
    d->showsProgress = show;
}

bool ReportEngine::isShowProgressDialog() const
{
    return d->showsProgress;
}

void ReportEngine::cancelRender() {}

} // namespace LimeReport
