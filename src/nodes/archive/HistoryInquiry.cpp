#include "nodes/archive/HistoryInquiry.h"

#include "nodes/archive/HistoryService.h"

namespace Nodes {

HistoryInquiry::~HistoryInquiry()
{
    Cancel();
}

Result HistoryInquiry::Ask(HistoryService &service, const HistoryRequest &request, Slot slot)
{
    Cancel();
    return service.Accept(request, std::move(slot), m_job);
}

void HistoryInquiry::Cancel()
{
    if (m_job)
        m_job->Cancel();
    m_job.reset();
}

} // namespace Nodes
