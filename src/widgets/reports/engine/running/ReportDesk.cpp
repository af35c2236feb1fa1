#include "widgets/reports/engine/running/ReportDesk.h"

#include "widgets/reports/engine/output/OutputThread.h"

#include <QEventLoop>
#include <QProgressDialog>

#include <memory>
#include <utility>

namespace LimeReport {

namespace {

constexpr int BeforeDialog = 700; // ms

} // namespace

ReportDesk::ReportDesk(QObject *parent) : QObject(parent)
{
    connect(&runner, &ReportRunner::finished, this, &ReportDesk::onRendered);
}

ReportDesk::~ReportDesk()
{
    delete m_output;
}

bool ReportDesk::take(const ReportTemplatePtr &made, const QString &error)
{
    runner.cancel();
    report = made;
    m_loadError = error;
    m_outputError.clear();
    m_dataProblems.clear();
    if (report)
        m_dataProblems = data.setTemplate(report->dataSources);
    return report != nullptr;
}

bool ReportDesk::fail(const QString &error)
{
    m_outputError = error;
    return false;
}

bool ReportDesk::render()
{
    if (!report)
        return fail(QStringLiteral("Отчёт не загружен."));
    runner.start(report, data);
    return true;
}

bool ReportDesk::start(const QString &file, QPrinter *printer)
{
    if (isBusy())
        return fail(QStringLiteral("Отчёт уже сохраняется или печатается."));
    m_outputError.clear();
    m_isOutputWanted = true;
    m_file = file;
    m_printer = printer;
    if (render())
        return true;
    m_isOutputWanted = false;
    return false;
}

void ReportDesk::onRendered()
{
    const bool isWanted = std::exchange(m_isOutputWanted, false);
    const QPointer<ReportDesk> alive(this);
    emit rendered();
    if (!alive || !isWanted)
        return;
    if (runner.isCancelled() || !runner.pages()) {
        endOutput(PageOutput::cancelled());
        return;
    }
    if (!runner.failure().isEmpty()) {
        endOutput(QStringLiteral("Отчёт неполон: %1").arg(runner.failure()));
        return;
    }
    m_output = new OutputThread(runner.report(), runner.pages(), nullptr);
    if (m_printer)
        m_output->toPrinter(m_printer);
    else
        m_output->toFile(m_file);
    connect(m_output, &QThread::finished, this, &ReportDesk::onOutput);
    m_output->start();
}

void ReportDesk::onOutput()
{
    const QString error = m_output->error();
    m_output->deleteLater();
    m_output = nullptr;
    endOutput(error);
}

void ReportDesk::endOutput(const QString &error)
{
    m_outputError = error;
    const bool isFile = !m_printer;
    m_printer = nullptr;
    emit putOut(isFile ? m_file : QString(), error);
}

void ReportDesk::cancel()
{
    runner.cancel();
    if (m_output)
        m_output->cancel();
}

bool ReportDesk::run(const QString &file, QPrinter *printer)
{
    QEventLoop loop;
    QString result;
    const QPointer<ReportDesk> alive(this);
    connect(this, &ReportDesk::putOut, &loop, [&](const QString &, const QString &error) {
        result = error;
        loop.quit();
    });
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    if (!start(file, printer))
        return false;
    std::unique_ptr<QProgressDialog> dialog;
    if (showsProgress) {
        dialog = std::make_unique<QProgressDialog>();
        showProgress(*dialog);
    }
    loop.exec();
    return alive && result.isEmpty();
}

void ReportDesk::showProgress(QProgressDialog &dialog)
{
    dialog.setWindowTitle(QStringLiteral("Отчёт"));
    dialog.setLabelText(QStringLiteral("Формирование отчёта…"));
    dialog.setCancelButtonText(QStringLiteral("Отмена"));
    dialog.setRange(0, 0);
    dialog.setMinimumDuration(BeforeDialog);
    dialog.setValue(0);
    connect(&dialog, &QProgressDialog::canceled, this, &ReportDesk::cancel);
    connect(&runner, &ReportRunner::progressed, &dialog, [&dialog](int pages) {
        dialog.setLabelText(QStringLiteral("Формирование отчёта: страниц %1").arg(pages));
    });
}

QString ReportDesk::lastError() const
{
    QStringList texts;
    if (!m_loadError.isEmpty())
        texts.append(m_loadError);
    if (report)
        texts += report->problems;
    texts += m_dataProblems;
    texts += runner.problems();
    if (!m_outputError.isEmpty())
        texts.append(m_outputError);
    return texts.join(QLatin1Char('\n'));
}

} // namespace LimeReport
