#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/model/services/AuthPriv.h"

#include <memory>

namespace Nodes {

class AccessRules;
class NodesCollection;

/// What somebody would be allowed to do in a project, though nobody is logged in: for those who
/// configure rights. As the project was when it was made. GUI thread.
class NODES_EXPORT AccessReview
{
public:
    /// Of a user with the roles configured; nothing for one who is not enabled.
    static AccessReview OfUser(const NodesCollection &project, const NodeLink &user);
    /// Of who has this role alone.
    static AccessReview OfRole(const NodesCollection &project, const NodeLink &role);
    ~AccessReview();

    /// By the same rules as systemAuthentication::CheckAccess; the empty link asks for the project
    /// as a whole.
    enNodePrivMode Decide(enPrivilegeType privilege, const NodeLink &node) const;
    /// The grant that decides so; empty when none does.
    NodeLink DecidedBy(enPrivilegeType privilege, const NodeLink &node) const;

private:
    explicit AccessReview(std::shared_ptr<const AccessRules> rules);

    std::shared_ptr<const AccessRules> m_rules;
};

} // namespace Nodes
