#include "nodes/archive/history/StoredSignal.h"

#include "nodes/archive/history/StoredHistory.h"

#include <utility>

namespace Nodes {

StoredSignal::StoredSignal(ArchiveSignalKey key, std::shared_ptr<const StoredHistory> stored)
    : m_key(std::move(key)), m_stored(std::move(stored))
{
}

Result StoredSignal::Read(HistoryColumnBuilder &into, const std::atomic<bool> &isCancelled) const
{
    // It may still grow.
    return m_stored->Read(m_key, 0, into, isCancelled);
}

} // namespace Nodes
