#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/engine/data/DataSet.h"
#include "widgets/reports/engine/pages/PageStore.h"
#include "widgets/reports/engine/template/ReportTemplate.h"

#include <QMutex>
#include <QStringList>

#include <atomic>
#include <functional>

namespace LimeReport {

class AggregateBook;
class ContentExpander;

/// Makes the pages of a report. On any thread, but on one.
class WIDGETS_EXPORT ReportLayout
{
public:
    ReportLayout(ReportTemplatePtr report, DataSet data);

    /// After each page that is finished.
    void onPage(std::function<void(int pages)> call) { m_onPage = std::move(call); }
    /// Fills `pages`, whose late texts are told at the end. False with `failure()` when it ended
    /// early; the pages made so far stand.
    bool run(PageStore &pages);
    /// From any thread: run() returns soon, also out of a script.
    void cancel();
    bool isCancelled() const { return m_isCancelled; }

    /// "" after success and after it was cancelled.
    const QString &failure() const { return m_failure; }
    /// What could not be printed as the template wants it.
    const QStringList &problems() const { return m_problems; }

private:
    void layOut(PageStore &pages, ContentExpander &expander, AggregateBook &book);

    ReportTemplatePtr m_report;
    DataSet m_data;
    std::function<void(int)> m_onPage;
    QString m_failure;
    QStringList m_problems;
    std::atomic<bool> m_isCancelled{false};
    QMutex m_mutex;
    ContentExpander *m_expander = nullptr; // while it runs
};

} // namespace LimeReport
