#include "nodes/reports/time/shiftTable.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

KindInfo shiftTable::Kind()
{
    return KindBuilder::For<shiftTable>("shiftTable", "Shift table", "Расписание смен")
        .Property<&shiftTable::m_starts>(Prop::Starts, "Shifts begin at", "Начала смен")
        .Property<&shiftTable::m_names>(Prop::Names, "Names of the shifts", "Названия смен");
}

ShiftPlan shiftTable::PlanOf(const NodesCollection *project)
{
    ShiftPlan plan;
    NodeLinks tables;
    if (project)
        project->FindNodes(NodeType(Code), &tables);
    for (const NodeLink &link : tables) {
        const auto *table = dynamic_cast<const shiftTable *>(link.GetNode());
        if (table && table->IsLocal() && ShiftPlan::Parse(table->m_starts, table->m_names, plan))
            break;
    }
    return plan;
}

void shiftTable::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    ShiftPlan plan;
    const Result read = ShiftPlan::Parse(m_starts, m_names, plan);
    if (!read)
        results.Add(GetNodeLink(), Result(this, read.GetType(), read.GetDetail()),
                    GetPath() + ": расписание смен не читается (" + read.GetDetail() +
                        "). Запишите начала смен так: 08:00 20:00.");
}

} // namespace Nodes
