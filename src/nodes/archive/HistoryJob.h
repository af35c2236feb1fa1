#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/HistoryAnswer.h"
#include "nodes/archive/HistoryRequest.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <vector>

namespace Nodes {

class HistorySource;

/// A request that is being worked on: read and answered by the thread of the HistoryService.
class NODES_EXPORT HistoryJob
{
public:
    using Slot = std::function<void(const std::shared_ptr<const HistoryAnswer> &)>;
    struct Item
    {
        NodeLink signal;
        Result result;                               ///< why it is not read
        std::shared_ptr<const HistorySource> source; ///< null where it is not read
    };

    /// `request.to` is a moment.
    HistoryJob(const HistoryRequest &request, std::vector<Item> items, Slot slot);

    HistoryPriority GetPriority() const { return m_request.priority; }
    /// Any thread. The slot neither runs nor will run when this returns, unless it is the slot that
    /// calls.
    void Cancel();
    /// Ends reading that is under way. Any thread.
    void Interrupt() { m_isInterrupted = true; }
    /// Cancelled or answered: nothing is left to do.
    bool IsDone() const { return m_isDone; }

    /// Reads one more signal. True when that was the last.
    bool ReadNext();
    /// Calls the slot with what was read, the rest being failures with `result`. Nothing when done.
    void Answer(const Result &result);

private:
    std::shared_ptr<const HistoryColumn> read(const Item &item) const;

    const HistoryRequest m_request;
    std::vector<Item> m_items; // empty when answered
    std::vector<std::shared_ptr<const HistoryColumn>> m_columns;
    std::atomic<bool> m_isInterrupted{false};
    std::atomic<bool> m_isDone{false};
    std::recursive_mutex m_mutex; // held while the slot runs, which may cancel
    Slot m_slot;                  // guarded; empty when done
};

} // namespace Nodes
