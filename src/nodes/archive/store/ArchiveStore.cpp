#include "nodes/archive/store/ArchiveStore.h"

#include "nodes/archive/store/sqlite/SqliteArchive.h"

namespace Nodes {

StoreTable<ArchiveStore> &ArchiveStores()
{
    static StoreTable<ArchiveStore> stores = [] {
        StoreTable<ArchiveStore> builtIn;
        builtIn.Add("",
                    [](const std::string &file) { return std::make_unique<SqliteArchive>(file); });
        return builtIn;
    }();
    return stores;
}

} // namespace Nodes
