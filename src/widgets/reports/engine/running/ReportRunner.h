#pragma once

#include "widgets/reports/engine/data/DataSet.h"
#include "widgets/reports/engine/pages/PageStore.h"
#include "widgets/reports/engine/template/ReportTemplate.h"

#include <QObject>
#include <QStringList>

namespace LimeReport {

class DataSourceManager;
class RenderThread;
class SnapshotTaker;

/// Runs renderings one after the other: reads the models in slices on the GUI thread, then makes
/// the pages on another. GUI thread.
class ReportRunner : public QObject
{
    Q_OBJECT

public:
    explicit ReportRunner(QObject *parent = nullptr);
    ~ReportRunner() override;

    /// Gives up one that is under way, whose finished() does not come then.
    void start(const ReportTemplatePtr &report, const DataSourceManager &data);
    void cancel();
    bool isRunning() const { return m_isRunning; }

    const ReportTemplatePtr &report() const { return m_report; }
    /// Of the last rendering; null before its first page is there.
    const PageStorePtr &pages() const { return m_pages; }
    const QStringList &problems() const { return m_problems; }
    bool isCancelled() const { return m_isCancelled; }
    /// Why the last rendering ended before the end of the report; "" when it did not.
    const QString &failure() const { return m_failure; }

signals:
    void started();
    void progressed(int pages);
    void finished();

private:
    void onTaken(const DataSet &data);
    void onProgressed(int pages);
    void onFinished();
    void giveUp();
    void end();

    SnapshotTaker *m_taker;
    RenderThread *m_thread = nullptr;
    ReportTemplatePtr m_report;
    PageStorePtr m_pages;
    QStringList m_problems;
    QString m_failure;
    bool m_isRunning = false;
    bool m_isCancelled = false;
};

} // namespace LimeReport
