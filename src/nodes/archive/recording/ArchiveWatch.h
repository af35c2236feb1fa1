#pragma once

#include "nodes/events/EventLevel.h"
#include "nodes/storage/StoreHealth.h"
#include "nodes/storage/records/RecordFinding.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace Nodes {

/// Tells people what becomes of the archive: that its store is away and back, and what was lost.
/// One thread.
class ArchiveWatch
{
public:
    using Teller = std::function<void(EventLevel, const std::string &)>;

    explicit ArchiveWatch(Teller tell) : m_tell(std::move(tell)) {}

    void Look(const StoreHealth &store);
    /// Samples of the signal of that name were lost.
    void NoteLoss(const std::string &signal, std::uint64_t count) { m_lost[signal] += count; }
    void TellLosses();

    /// What the journal says about a finding, in Russian.
    static std::string TextOf(const RecordFinding &finding);

private:
    const Teller m_tell;
    bool m_isAwayTold = false;
    Timestamp m_awaySince = 0;
    std::map<std::string, std::uint64_t> m_lost; // by signal
};

} // namespace Nodes
