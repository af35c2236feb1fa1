#include "nodes/alarms/state/AlarmStateStore.h"

#include "nodes/alarms/state/SqliteAlarmStates.h"

namespace Nodes {

StoreTable<AlarmStateStore, RecordHome> &AlarmStateStores()
{
    static StoreTable<AlarmStateStore, RecordHome> stores = [] {
        StoreTable<AlarmStateStore, RecordHome> builtIn;
        builtIn.Add("", [](const std::string &file, const RecordHome &home) {
            return std::make_unique<SqliteAlarmStates>(file, home);
        });
        return builtIn;
    }();
    return stores;
}

} // namespace Nodes
