#pragma once

#include "nodes/alarms/engine/AlarmInputs.h"
#include "nodes/drivers/PeriodicWorker.h"

#include <functional>

namespace Nodes {

struct AlarmHealth;
struct ArchiveHealth;
struct StoreHealth;

/// The station's own alarm that records are at risk: the journal, the archive or the states of the
/// alarms have not got into their files for some seconds, or entries or samples were lost. Looks
/// every second on a thread of its own. Start, Stop: GUI thread.
class RecordsAlarm
{
public:
    struct Sources
    {
        std::function<StoreHealth()> journal;
        std::function<AlarmHealth()> alarms;
        std::function<ArchiveHealth()> archive;
    };

    RecordsAlarm();

    /// `node` stands for the alarm where a node is asked for: links, rights, acknowledgement.
    AlarmInputs Describe(const NodeLink &node) const;
    void Start(Sources sources);
    void Stop() { m_worker.Stop(); }

private:
    std::shared_ptr<ValueCell> m_cell;
    PeriodicWorker m_worker;
};

} // namespace Nodes
