#include "widgets/reports/engine/output/OutputThread.h"

#include <QElapsedTimer>

namespace LimeReport {

namespace {

constexpr int BetweenTelling = 100; // ms

} // namespace

OutputThread::OutputThread(const ReportTemplatePtr &report, const PageStorePtr &pages,
                           QObject *parent)
    : QThread(parent), m_report(report), m_pages(pages)
{
}

OutputThread::~OutputThread()
{
    cancel();
    wait();
}

void OutputThread::run()
{
    PageOutput output(m_report, m_pages);
    QElapsedTimer told;
    told.start();
    output.onPage([&](int pages) {
        if (told.elapsed() < BetweenTelling)
            return;
        told.start();
        emit progressed(pages, m_pages->count());
    });
    m_error =
        m_printer ? output.print(*m_printer, m_isCancelled) : output.savePdf(m_file, m_isCancelled);
}

} // namespace LimeReport
