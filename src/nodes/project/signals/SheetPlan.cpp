#include "nodes/project/signals/SheetPlan.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

namespace Nodes {

void SheetPlan::Discard()
{
    for (const Addition &addition : additions) {
        if (NodesCollection *project = addition.clone.GetNodesCollection())
            project->TakeClone(addition.clone);
    }
    *this = SheetPlan();
}

} // namespace Nodes
