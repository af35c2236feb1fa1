#include "nodes/archive/store/ArchiveStore.h"

namespace Nodes {

StoreTable<ArchiveStore> &ArchiveStores()
{
    static StoreTable<ArchiveStore> stores;
    return stores;
}

} // namespace Nodes
