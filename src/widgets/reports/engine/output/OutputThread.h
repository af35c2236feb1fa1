#pragma once

#include "widgets/reports/engine/output/PageOutput.h"

#include <QThread>

namespace LimeReport {

/// Saves or prints beside the GUI thread.
class OutputThread : public QThread
{
    Q_OBJECT

public:
    OutputThread(const ReportTemplatePtr &report, const PageStorePtr &pages, QObject *parent);
    /// Cancels and waits.
    ~OutputThread() override;

    /// One of the two, before start().
    void toFile(const QString &file) { m_file = file; }
    /// The printer is not to be touched until finished().
    void toPrinter(QPrinter *printer) { m_printer = printer; }

    void cancel() { m_isCancelled = true; }
    const QString &file() const { return m_file; }
    /// After finished(): "" or what went wrong, for operators.
    const QString &error() const { return m_error; }

signals:
    /// Of so many; some ten times a second.
    void progressed(int pages, int count);

protected:
    void run() override;

private:
    ReportTemplatePtr m_report;
    PageStorePtr m_pages;
    QString m_file;
    QPrinter *m_printer = nullptr;
    QString m_error;
    std::atomic<bool> m_isCancelled{false};
};

} // namespace LimeReport
