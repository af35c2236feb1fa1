#include "nodes/auth/AccessReview.h"

#include "nodes/auth/AccessRules.h"

namespace Nodes {

AccessReview::AccessReview(std::shared_ptr<const AccessRules> rules) : m_rules(std::move(rules)) {}

AccessReview::~AccessReview() = default;

AccessReview AccessReview::OfUser(const NodesCollection &project, const NodeLink &user)
{
    return AccessReview(std::make_shared<const AccessRules>(
        AccessRules::Survey(project), AccessRules::SurveyInstances(project), user, NodeLink()));
}

AccessReview AccessReview::OfRole(const NodesCollection &project, const NodeLink &role)
{
    return AccessReview(std::make_shared<const AccessRules>(
        AccessRules::Survey(project), AccessRules::SurveyInstances(project), NodeLink(), role));
}

enNodePrivMode AccessReview::Decide(enPrivilegeType privilege, const NodeLink &node) const
{
    return m_rules->Decide(privilege, node.GetNodeId());
}

NodeLink AccessReview::DecidedBy(enPrivilegeType privilege, const NodeLink &node) const
{
    NodeLink by;
    m_rules->Decide(privilege, node.GetNodeId(), &by);
    return by;
}

} // namespace Nodes
