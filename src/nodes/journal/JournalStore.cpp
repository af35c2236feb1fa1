#include "nodes/journal/JournalStore.h"

#include "nodes/journal/SqliteJournal.h"

namespace Nodes {

StoreTable<JournalStore> &JournalStores()
{
    static StoreTable<JournalStore> stores = [] {
        StoreTable<JournalStore> builtIn;
        builtIn.Add("",
                    [](const std::string &file) { return std::make_unique<SqliteJournal>(file); });
        return builtIn;
    }();
    return stores;
}

} // namespace Nodes
