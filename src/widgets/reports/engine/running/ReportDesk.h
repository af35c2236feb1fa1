#pragma once

#include "widgets/reports/engine/data/DataSourceManager.h"
#include "widgets/reports/engine/running/ReportRunner.h"
#include "widgets/reports/engine/template/ReportTemplate.h"

#include <QObject>
#include <QPointer>

class QPrinter;
class QProgressDialog;

namespace LimeReport {

class OutputThread;

/// Everything about one report: its template, its data, its renderings and their output. GUI
/// thread.
class ReportDesk : public QObject
{
    Q_OBJECT

public:
    explicit ReportDesk(QObject *parent = nullptr);
    ~ReportDesk() override;

    bool take(const ReportTemplatePtr &report, const QString &error);
    bool render();
    /// Renders anew and puts the pages out: to the file, or to the printer when there is one.
    bool start(const QString &file, QPrinter *printer);
    /// Waits with the event loop running.
    bool run(const QString &file, QPrinter *printer);
    void cancel();
    bool isBusy() const { return m_isOutputWanted || m_output; }
    QString lastError() const;
    bool fail(const QString &error);

    DataSourceManager data;
    ReportRunner runner;
    ReportTemplatePtr report;
    bool showsProgress = true;

signals:
    /// Of start(): "" or what went wrong. The file is empty after printing.
    void putOut(const QString &file, const QString &error);
    void rendered();

private:
    void onRendered();
    void onOutput();
    void endOutput(const QString &error);
    void showProgress(QProgressDialog &dialog);

    QString m_loadError;
    QStringList m_dataProblems;
    QString m_outputError;
    bool m_isOutputWanted = false;
    QString m_file;
    QPrinter *m_printer = nullptr;
    OutputThread *m_output = nullptr;
};

} // namespace LimeReport
