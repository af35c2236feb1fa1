#pragma once

#include "nodes/NodesExport.h"
#include "nodes/storage/records/RecordQueue.h"

#include <chrono>

namespace Nodes {

/// How much goes into one transaction. What a transaction costs besides its records, among it a
/// page of an index for each of their sources, is shared by more of them while many wait. One that
/// took long makes the next one smaller: what is appended meanwhile waits for it.
class NODES_EXPORT RecordPortion
{
public:
    struct Limits
    {
        RecordQueue::Bounds usual{1000, 8u << 20};
        std::size_t mostRecords = 16000; ///< while more wait; the bound of the bytes stays
        std::chrono::milliseconds longest{200};
    };

    explicit RecordPortion(const Limits &limits) : m_limits(limits), m_now(limits.usual) {}

    const RecordQueue::Bounds &Usual() const { return m_limits.usual; }
    const RecordQueue::Bounds &Now() const { return m_now; }
    /// A transaction took so long.
    void Learn(std::size_t records, std::chrono::steady_clock::duration taken);

private:
    const Limits m_limits;
    RecordQueue::Bounds m_now;
};

} // namespace Nodes
