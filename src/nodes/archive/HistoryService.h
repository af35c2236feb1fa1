#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/HistoryJob.h"
#include "nodes/archive/HistoryReader.h"
#include "nodes/timers/DeadlineThread.h"

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace Nodes {

class HistorySource;

/// Answers requests for history (see HistoryInquiry) from the sources that are registered, on a
/// thread of its own, which runs from the first request on. Signals of urgent requests go before
/// those of others. GUI thread.
class NODES_EXPORT HistoryService
{
public:
    HistoryService();
    ~HistoryService();

    /// Keeper of the history of the signal with that id, as long as somebody else owns it; requests
    /// that were accepted before are still answered. Duplicate when the signal has another one.
    [[nodiscard]] Result AddSource(unsigned long signal,
                                   const std::shared_ptr<const HistorySource> &source);

    bool HasSource(unsigned long signal) const;
    /// What keeps that signal's history, for who reads it on a thread of his own, as long as he
    /// likes. NotFound, AccessDenied or NotAvailable, as answers to requests tell it.
    [[nodiscard]] Result FindSource(const NodeLink &signal, HistoryReader reader,
                                    std::shared_ptr<const HistorySource> &source) const;

    /// For HistoryInquiry.
    [[nodiscard]] Result Accept(HistoryRequest request, HistoryJob::Slot slot,
                                std::shared_ptr<HistoryJob> &job);
    /// Answers what waits with Cancelled and ends the thread. Requests may follow.
    void Stop();

private:
    HistoryJob::Item lookUp(const NodeLink &link, HistoryReader reader) const;
    std::shared_ptr<HistoryJob> next();
    Timestamp work();

    std::map<unsigned long, std::weak_ptr<const HistorySource>> m_sources; // by signal
    std::mutex m_mutex;
    std::deque<std::shared_ptr<HistoryJob>> m_jobs; // guarded; in the order of asking
    bool m_isStopping = false;                      // guarded
    bool m_isRunning = false;
    DeadlineThread m_thread;
};

} // namespace Nodes
