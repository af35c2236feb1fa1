#include "widgets/reports/engine/lrreportengine.h"

#include "widgets/reports/engine/lrpreviewreportwidget.h"
#include "widgets/reports/engine/running/ReportDesk.h"
#include "widgets/reports/engine/template/TemplateReader.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

namespace LimeReport {

ReportEngine::ReportEngine(QObject *parent) : QObject(parent), d(std::make_unique<ReportDesk>())
{
    connect(&d->runner, &ReportRunner::started, this, &ReportEngine::renderStarted);
    connect(&d->runner, &ReportRunner::progressed, this, &ReportEngine::renderPageFinished);
    connect(d.get(), &ReportDesk::rendered, this, &ReportEngine::renderFinished);
    connect(d.get(), &ReportDesk::putOut, this, &ReportEngine::onPutOut);
}

ReportEngine::~ReportEngine() = default;

bool ReportEngine::loadFromFile(const QString &file, bool reload)
{
    QString error;
    const ReportTemplatePtr report = TemplateReader::readFile(file, error);
    return d->take(report, error);
}

bool ReportEngine::loadFromString(const QString &report, const QString &name)
{
    QString error;
    const ReportTemplatePtr made = TemplateReader::read(report.toUtf8(), name, QString(), error);
    return d->take(made, error);
}

IDataSourceManager *ReportEngine::dataManager()
{
    return &d->data;
}

PreviewReportWidget *ReportEngine::createPreviewWidget(QWidget *parent)
{
    PreviewReportWidget *preview = new PreviewReportWidget(*d, parent);
    if (d->report)
        d->render();
    return preview;
}

bool ReportEngine::printReport(QPrinter *printer)
{
    if (printer)
        return d->run(QString(), printer);
    if (QPrinterInfo::availablePrinterNames().isEmpty())
        return d->fail(QStringLiteral("Не напечатано: на этой машине нет ни одного принтера."));
    QPrinter asked(QPrinter::HighResolution);
    QPrintDialog dialog(&asked);
    return dialog.exec() == QDialog::Accepted && d->run(QString(), &asked);
}

bool ReportEngine::printToPDF(const QString &file)
{
    return d->run(file, nullptr);
}

bool ReportEngine::startPdf(const QString &file)
{
    return d->start(file, nullptr);
}

bool ReportEngine::render()
{
    return d->render();
}

bool ReportEngine::isRendering() const
{
    return d->runner.isRunning();
}

int ReportEngine::pageCount() const
{
    return d->runner.pages() ? d->runner.pages()->count() : 0;
}

QString ReportEngine::lastError() const
{
    return d->lastError();
}

void ReportEngine::setShowProgressDialog(bool show)
{
    d->showsProgress = show;
}

bool ReportEngine::isShowProgressDialog() const
{
    return d->showsProgress;
}

void ReportEngine::onPutOut(const QString &file, const QString &error)
{
    if (!file.isEmpty())
        emit saved(file, error);
}

void ReportEngine::cancelRender()
{
    d->cancel();
}

} // namespace LimeReport
