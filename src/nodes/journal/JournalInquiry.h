#pragma once

#include "nodes/NodesExport.h"
#include "nodes/events/EventInfo.h"
#include "nodes/journal/JournalQuery.h"
#include "nodes/values/Result.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace Nodes {

class EventJournal;

/// A part of what an inquiry found. Plain value.
struct JournalPage
{
    std::vector<EventInfo> events; ///< in the order of the query, behind those of the page before
    bool isFirst = false;
    bool isLast = false; ///< nothing follows; also after a failure
    /// Of the last page: the limit was reached, the interval has more entries.
    bool isCut = false;
    Result result; ///< why it is the last one, when it ended by a failure
};

/// Somebody who reads many entries of the journal, one query at a time, a page after the other, on
/// a thread of its own: asking again replaces what was asked before. Not more than two pages wait
/// for whoever takes them. A member of the asker; all operations on one thread.
class NODES_EXPORT JournalInquiry
{
public:
    /// Runs on the reading thread and must not wait for the GUI.
    using Slot = std::function<void(const JournalPage &)>;

    /// Entries of the first page, which is to be there at once, and of those that follow.
    static constexpr std::size_t FirstPage = 500;
    static constexpr std::size_t NextPages = 4000;

    JournalInquiry() = default;
    ~JournalInquiry();
    JournalInquiry(const JournalInquiry &) = delete;
    JournalInquiry &operator=(const JournalInquiry &) = delete;

    /// Success: accepted, the slot is called with every page of at most `query.limit` entries in
    /// all, the last one saying so. NotAvailable while the journal is not open, InvalidArgument for
    /// an interval that ends before it begins.
    [[nodiscard]] Result Ask(const EventJournal &journal, const JournalQuery &query, Slot slot);
    /// To be told for each page that was taken: the one after the next may be read.
    void Continue();
    /// The slot neither runs nor will run when this returns, unless it is the slot that cancels.
    /// Does not wait for a disk.
    void Cancel();

private:
    class Job;

    std::shared_ptr<Job> m_job;
};

} // namespace Nodes
