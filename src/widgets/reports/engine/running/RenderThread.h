#pragma once

#include "widgets/reports/engine/layout/ReportLayout.h"

#include <QElapsedTimer>
#include <QThread>

namespace LimeReport {

/// Makes the pages of one report beside the GUI thread.
class RenderThread : public QThread
{
    Q_OBJECT

public:
    RenderThread(const ReportTemplatePtr &report, const DataSet &data, QObject *parent);
    /// Cancels and waits.
    ~RenderThread() override;

    const PageStorePtr &pages() const { return m_pages; }
    void cancel() { m_layout.cancel(); }
    bool isCancelled() const { return m_layout.isCancelled(); }

    /// After finished().
    QStringList problems() const;
    /// Why it ended before the end of the report; "" when it did not.
    const QString &failure() const { return m_layout.failure(); }

signals:
    /// At most some ten times a second.
    void progressed(int pages);

protected:
    void run() override;

private:
    void onPage(int pages);

    ReportLayout m_layout;
    PageStorePtr m_pages;
    QElapsedTimer m_told;
};

} // namespace LimeReport
