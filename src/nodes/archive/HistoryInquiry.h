#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/HistoryJob.h"

namespace Nodes {

class HistoryService;

/// Somebody who asks for history, one thing at a time: asking again replaces what was asked before
/// and has not been answered. A member of the asker; Ask, Cancel and destruction on one thread.
class NODES_EXPORT HistoryInquiry
{
public:
    /// Runs on the history's thread, or on the one that stops it, and must not wait for the GUI.
    using Slot = HistoryJob::Slot;

    HistoryInquiry() = default;
    ~HistoryInquiry();
    HistoryInquiry(const HistoryInquiry &) = delete;
    HistoryInquiry &operator=(const HistoryInquiry &) = delete;

    /// Success: accepted, the slot is called exactly once, unless cancelled, be it by the next Ask.
    /// What the current user may not view is answered with AccessDenied. InvalidArgument for a span
    /// that ends before it begins and for no signals. GUI thread.
    [[nodiscard]] Result Ask(HistoryService &service, const HistoryRequest &request, Slot slot);
    /// The slot neither runs nor will run when this returns, unless it is the slot that cancels.
    /// Reading that is under way ends early.
    void Cancel();

private:
    std::shared_ptr<HistoryJob> m_job;
};

} // namespace Nodes
