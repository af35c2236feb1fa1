#pragma once

#include "nodes/archive/HistorySource.h"
#include "nodes/archive/store/ArchiveSignalKey.h"

#include <memory>

namespace Nodes {

class StoredHistory;

/// What a store holds of one signal, whether there is a node of it or not.
class StoredSignal : public HistorySource
{
public:
    StoredSignal(ArchiveSignalKey key, std::shared_ptr<const StoredHistory> stored);

    [[nodiscard]] Result Read(HistoryColumnBuilder &into,
                              const std::atomic<bool> &isCancelled) const override;

private:
    const ArchiveSignalKey m_key;
    const std::shared_ptr<const StoredHistory> m_stored;
};

} // namespace Nodes
