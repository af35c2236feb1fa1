#include "nodes/signals/SignalPresence.h"

#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"

namespace Nodes {

namespace {

// What never came needs no telling: nothing that looks good stands anywhere.
void degrade(const ConfigNode &node, Quality quality)
{
    const auto *signal = dynamic_cast<const BasicSignal *>(&node);
    if (signal && !signal->GetValue().IsEmpty())
        signal->GetCell()->Degrade(quality, Result(signal, Result::NotFound));
}

} // namespace

void AnnounceRemoval(const ConfigNode &subtree)
{
    degrade(subtree, Quality::Bad);
    for (const auto &child : subtree.Children())
        AnnounceRemoval(*child);
}

void AnnounceReturn(const ConfigNode &subtree)
{
    const auto *signal = dynamic_cast<const BasicSignal *>(&subtree);
    if (signal && signal->GetOrigin() == SignalOrigin::Process)
        degrade(subtree, Quality::Good);
    for (const auto &child : subtree.Children())
        AnnounceReturn(*child);
}

} // namespace Nodes
