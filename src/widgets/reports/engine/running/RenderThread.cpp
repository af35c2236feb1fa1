#include "widgets/reports/engine/running/RenderThread.h"

namespace LimeReport {

namespace {

constexpr int BetweenTelling = 100; // ms

} // namespace

RenderThread::RenderThread(const ReportTemplatePtr &report, const DataSet &data, QObject *parent)
    : QThread(parent), m_layout(report, data), m_pages(std::make_shared<PageStore>())
{
    m_layout.onPage([this](int pages) { onPage(pages); });
}

RenderThread::~RenderThread()
{
    cancel();
    wait();
}

void RenderThread::run()
{
    m_layout.run(*m_pages);
}

void RenderThread::onPage(int pages)
{
    if (m_told.isValid() && m_told.elapsed() < BetweenTelling)
        return;
    m_told.start();
    emit progressed(pages);
}

QStringList RenderThread::problems() const
{
    QStringList texts = m_layout.problems();
    if (!m_layout.failure().isEmpty())
        texts.prepend(m_layout.failure());
    return texts;
}

} // namespace LimeReport
