#include "nodes/archive/HistoryService.h"

#include "nodes/archive/HistorySource.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/Clock.h"

#include <algorithm>
#include <utility>

namespace Nodes {

HistoryService::HistoryService() = default;

HistoryService::~HistoryService()
{
    Stop();
}

Result HistoryService::AddSource(unsigned long signal,
                                 const std::shared_ptr<const HistorySource> &source)
{
    std::weak_ptr<const HistorySource> &place = m_sources[signal];
    if (!place.expired())
        return Result(Result::Duplicate, "history of node " + std::to_string(signal));
    place = source;
    return Result();
}

bool HistoryService::HasSource(unsigned long signal) const
{
    const auto found = m_sources.find(signal);
    return found != m_sources.end() && !found->second.expired();
}

Result HistoryService::FindSource(const NodeLink &signal, HistoryReader reader,
                                  std::shared_ptr<const HistorySource> &source) const
{
    HistoryJob::Item item = lookUp(signal, reader);
    source = std::move(item.source);
    return item.result;
}

HistoryJob::Item HistoryService::lookUp(const NodeLink &link, HistoryReader reader) const
{
    const auto *signal = dynamic_cast<const BasicSignal *>(link.GetNode());
    if (!signal)
        return {link, Result(Result::NotFound, "signal " + std::to_string(link.GetNodeId())), {}};
    if (reader == HistoryReader::CurrentUser && IsForbiddenToView(*signal))
        return {link, Result(signal, Result::AccessDenied), {}};
    const auto found = m_sources.find(link.GetNodeId());
    std::shared_ptr<const HistorySource> source =
        found == m_sources.end() ? nullptr : found->second.lock();
    if (!source)
        return {link, Result(signal, Result::NotAvailable, "no history is kept"), {}};
    return {link, Result(), std::move(source)};
}

Result HistoryService::Accept(HistoryRequest request, HistoryJob::Slot slot,
                              std::shared_ptr<HistoryJob> &job)
{
    if (request.to == 0)
        request.to = Clock::Current().Now();
    if (request.nodes.empty() || request.from < 0 || request.from > request.to)
        return Result(Result::InvalidArgument, "history of no signal or of no time");
    std::vector<HistoryJob::Item> items;
    items.reserve(request.nodes.size());
    for (const NodeLink &link : request.nodes)
        items.push_back(lookUp(link, HistoryReader::CurrentUser));
    job = std::make_shared<HistoryJob>(request, std::move(items), std::move(slot));
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(job);
    }
    if (!std::exchange(m_isRunning, true))
        m_thread.Start([this] { return work(); });
    m_thread.Wake();
    return Result();
}

std::shared_ptr<HistoryJob> HistoryService::next()
{
    const std::lock_guard lock(m_mutex);
    const auto gone = [](const auto &job) { return job->IsDone(); };
    m_jobs.erase(std::remove_if(m_jobs.begin(), m_jobs.end(), gone), m_jobs.end());
    const auto first =
        std::min_element(m_jobs.begin(), m_jobs.end(), [](const auto &a, const auto &b) {
            return a->GetPriority() < b->GetPriority();
        });
    return m_isStopping || first == m_jobs.end() ? nullptr : *first;
}

Timestamp HistoryService::work()
{
    // One signal at a time: what is urgent waits for no long answer of something else.
    while (const std::shared_ptr<HistoryJob> job = next()) {
        if (job->ReadNext())
            job->Answer(Result());
    }
    return DeadlineThread::Never;
}

void HistoryService::Stop()
{
    std::deque<std::shared_ptr<HistoryJob>> unanswered;
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
        for (const auto &job : m_jobs)
            job->Interrupt();
    }
    m_thread.Stop();
    m_isRunning = false;
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = false;
        unanswered.swap(m_jobs);
    }
    for (const auto &job : unanswered)
        job->Answer(Result(Result::Cancelled, "the history is closed"));
}

} // namespace Nodes
