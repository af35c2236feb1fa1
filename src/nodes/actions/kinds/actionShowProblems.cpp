#include "nodes/actions/kinds/actionShowProblems.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/services/AccessCheck.h"

namespace Nodes {

KindInfo actionShowProblems::Kind()
{
    return KindBuilder::For<actionShowProblems>("actionShowProblems", "Show project problems",
                                                "Показ проблем проекта");
}

Result actionShowProblems::Demand() const
{
    return DemandAccess(PrivilegeConfigure, *this, "проверка проекта");
}

void actionShowProblems::CollectDemands(AccessDemands &demands) const
{
    demands.push_back({PrivilegeConfigure, GetNodeLink()});
}

} // namespace Nodes
