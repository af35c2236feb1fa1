#include "nodes/actions/kinds/actionShowWindowTemplate.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/templates/windowTemplate.h"

namespace Nodes {

KindInfo actionShowWindowTemplate::Kind()
{
    return KindBuilder::For<actionShowWindowTemplate>(
               "actionShowWindowTemplate", "Show window template", "Открытие окна по шаблону")
        .Inherit<BasicTemplateAction>();
}

windowTemplate *actionShowWindowTemplate::GetWindowTemplate() const
{
    return dynamic_cast<windowTemplate *>(GetWindow());
}

ConfigNode *actionShowWindowTemplate::GetTemplate() const
{
    return GetWindowTemplate();
}

void actionShowWindowTemplate::CollectDemands(AccessDemands &demands) const
{
    demands.push_back({PrivilegeOpen, NodeLink(GetTemplate())});
}

} // namespace Nodes
