#include "nodes/archive/store/ArchiveStore.h"

#include "nodes/archive/postgresql/PostgresArchive.h"
#include "nodes/archive/store/sqlite/SqliteArchive.h"
#include "nodes/storage/postgresql/PostgresLocation.h"

namespace Nodes {

StoreTable<ArchiveStore> &ArchiveStores()
{
    static StoreTable<ArchiveStore> stores = [] {
        StoreTable<ArchiveStore> builtIn;
        builtIn.Add("",
                    [](const std::string &file) { return std::make_unique<SqliteArchive>(file); });
        for (const char *scheme : PostgresLocation::Schemes)
            builtIn.Add(scheme, [](const std::string &location) {
                return std::make_unique<PostgresArchive>(location);
            });
        return builtIn;
    }();
    return stores;
}

} // namespace Nodes
