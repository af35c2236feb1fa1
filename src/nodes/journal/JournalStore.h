#pragma once

#include "nodes/journal/JournalRetention.h"
#include "nodes/journal/JournalSearch.h"
#include "nodes/storage/StoreTable.h"
#include "nodes/storage/records/RecordStore.h"

#include <functional>
#include <memory>

namespace Nodes {

/// Store of the journal's records. Besides what RecordStore says, an implementation chains each row
/// to the one before by ChainHash, numbers them without gaps, and keeps what
/// proves the rest when it takes the oldest ones.
class JournalStore : public RecordStore
{
public:
    /// Makes searches of what is stored, whenever it is called, also after the store is gone.
    using SearchMaker = std::function<std::unique_ptr<JournalSearch>()>;

    virtual SearchMaker GetSearchMaker() const = 0;
    /// Before Open. What goes is told of by an entry first, which `home` names.
    virtual void SetRetention(const JournalRetention &retention, const RecordHome &home) = 0;
};

/// Kinds of store by their location. A path is an SQLite file.
NODES_EXPORT StoreTable<JournalStore> &JournalStores();

} // namespace Nodes
