#include "apps/records/OpenedJournal.h"

#include "apps/records/RecordsOptions.h"
#include "apps/records/StoreLocation.h"

#include "nodes/journal/JournalStore.h"

namespace Records {

using Nodes::Result;

Result OpenedJournal::open(const RecordsOptions &options)
{
    Result result = StoreLocation::find(options.store, StoreLocation::Kind::Journal, m_location);
    std::unique_ptr<Nodes::JournalStore> store;
    if (result)
        result = Nodes::JournalStores().Make(m_location, store);
    if (result)
        m_search = store->GetSearchMaker()();
    return result;
}

std::string OpenedJournal::shownLocation() const
{
    return StoreLocation::shown(m_location);
}

} // namespace Records
