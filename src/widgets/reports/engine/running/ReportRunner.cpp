#include "widgets/reports/engine/running/ReportRunner.h"

#include "widgets/reports/engine/data/SnapshotTaker.h"
#include "widgets/reports/engine/running/RenderThread.h"

#include <QTimer>

namespace LimeReport {

ReportRunner::ReportRunner(QObject *parent) : QObject(parent), m_taker(new SnapshotTaker(this))
{
    connect(m_taker, &SnapshotTaker::taken, this, &ReportRunner::onTaken);
}

ReportRunner::~ReportRunner() = default;

void ReportRunner::start(const ReportTemplatePtr &report, const DataSourceManager &data)
{
    giveUp();
    m_report = report;
    m_pages.reset();
    m_problems.clear();
    m_failure.clear();
    m_isCancelled = false;
    const bool isFirst = !m_isRunning;
    m_isRunning = true;
    m_taker->start(data);
    if (isFirst)
        emit started();
}

// The thread ends by itself and is deleted then; nobody waits for it.
void ReportRunner::giveUp()
{
    m_taker->cancel();
    if (!m_thread)
        return;
    m_thread->disconnect(this);
    m_thread->cancel();
    connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    if (m_thread->isFinished())
        m_thread->deleteLater();
    m_thread = nullptr;
}

void ReportRunner::onTaken(const DataSet &data)
{
    if (!m_isRunning || m_thread)
        return;
    m_thread = new RenderThread(m_report, data, this);
    connect(m_thread, &RenderThread::progressed, this, &ReportRunner::onProgressed);
    connect(m_thread, &QThread::finished, this, &ReportRunner::onFinished);
    m_thread->start();
}

// What a thread that was given up had posted before arrives all the same: its sender is none then.
void ReportRunner::onProgressed(int pages)
{
    if (!m_thread || sender() != m_thread)
        return;
    m_pages = m_thread->pages();
    emit progressed(pages);
}

void ReportRunner::onFinished()
{
    if (!m_thread || sender() != m_thread)
        return;
    m_pages = m_thread->pages();
    m_problems = m_thread->problems();
    m_failure = m_thread->failure();
    m_thread->deleteLater();
    m_thread = nullptr;
    end();
}

void ReportRunner::cancel()
{
    if (!m_isRunning || m_isCancelled)
        return;
    m_isCancelled = true;
    if (m_thread) {
        m_thread->cancel();
    } else {
        m_taker->cancel();
        QTimer::singleShot(0, this, &ReportRunner::end);
    }
}

void ReportRunner::end()
{
    if (!m_isRunning || m_thread)
        return;
    m_isRunning = false;
    emit finished();
}

} // namespace LimeReport
