#pragma once

#include "nodes/archive/store/blocks/ArchiveRows.h"
#include "nodes/archive/store/blocks/BlockBytes.h"

#include <deque>
#include <map>
#include <vector>

namespace Nodes {

/// What the log of an archive holds of each signal, kept from one reading to the next: of the log
/// only what is new is read, and of a signal only what is asked for is unpacked. One thread.
class LogTails
{
public:
    explicit LogTails(ArchiveRows &rows) : m_rows(rows) {}

    /// What is known may be of other tables.
    void Forget();
    /// The samples of the signal that are in no chunk yet, by time. Within a transaction.
    [[nodiscard]] Result Find(const StoredSignal &signal, SampleRun &tail);
    /// Bytes of the signal in the log, as packed.
    std::size_t BytesOf(std::int64_t signal) const;

private:
    struct Tail
    {
        std::vector<std::pair<const BlockBytes::LogRow *, std::string_view>> parts;
        std::size_t unpacked = 0; // of the parts
        SampleRun run;
    };

    [[nodiscard]] Result refresh();

    ArchiveRows &m_rows;
    std::int64_t m_first = 0;
    std::int64_t m_last = 0;
    std::deque<BlockBytes::LogRow> m_log;
    std::map<std::int64_t, Tail> m_tails;
};

} // namespace Nodes
