#include "nodes/model/ChangeBatch.h"

#include <map>
#include <utility>
#include <vector>

namespace Nodes {

namespace {

struct Pending
{
    ChangeBatch::Change change;
    ChangeBatch::Tell tell;
};

/// A batch belongs to its thread: others tell their changes as ever.
struct Batch
{
    int depth = 0;
    std::vector<Pending> pending;
    std::map<std::pair<unsigned long, unsigned long>, std::size_t> places; ///< by project and node
};

Batch &current()
{
    static thread_local Batch batch;
    return batch;
}

} // namespace

ChangeBatch::ChangeBatch()
{
    ++current().depth;
}

// Whoever is told may begin the next batch.
ChangeBatch::~ChangeBatch()
{
    Batch &batch = current();
    if (--batch.depth > 0)
        return;
    batch.places.clear();
    for (const Pending &pending : std::exchange(batch.pending, {}))
        pending.tell(pending.change);
}

bool ChangeBatch::Defer(const Change &change, Tell tell)
{
    Batch &batch = current();
    if (batch.depth == 0)
        return false;
    const auto [place, isNew] =
        batch.places.try_emplace({change.project, change.node}, batch.pending.size());
    if (isNew) {
        batch.pending.push_back({change, tell});
        return true;
    }
    unsigned &known = batch.pending[place->second].change.valueId;
    known = known == change.valueId ? known : 0;
    return true;
}

} // namespace Nodes
