#include "nodes/auth/AccessRules.h"

#include "nodes/auth/SecurityFindings.h"
#include "nodes/auth/securityGrant.h"
#include "nodes/auth/securityUser.h"
#include "nodes/model/NodesCollection.h"

namespace Nodes {

namespace {

void survey(const ConfigNode &node, AccessRules::Tree &tree)
{
    if (node.GetNodeType().GetFamily() == NodeType::TypeSecurity)
        tree.securityNodes.push_back(node.GetNodeLink());
    tree.speaksOfUsers = tree.speaksOfUsers || SpeaksOfUsers(node);
    for (const auto &child : node.Children()) {
        tree.parents.emplace(child->GetId(), node.GetId());
        survey(*child, tree);
    }
}

void place(const ConfigNode &node, const NodesCollection &project,
           AccessRules::Instances &instances)
{
    const ConfigNode *parent = node.GetParent();
    instances.places[node.GetId()] = {parent ? parent->GetId() : 0,
                                      project.GetOriginal(node.GetId())};
    for (const auto &child : node.Children())
        place(*child, project, instances);
}

} // namespace

std::shared_ptr<const AccessRules::Tree> AccessRules::Survey(const NodesCollection &project)
{
    auto tree = std::make_shared<Tree>();
    tree->revision = project.GetRevision();
    tree->parents.reserve(project.GetNodeCount());
    if (const ConfigNode *root = project.GetRoot())
        survey(*root, *tree);
    return tree;
}

std::shared_ptr<const AccessRules::Instances>
AccessRules::SurveyInstances(const NodesCollection &project)
{
    auto instances = std::make_shared<Instances>();
    instances->revision = project.GetInstanceRevision();
    for (const ConfigNode *instance : project.GetInstances())
        place(*instance, project, *instances);
    return instances;
}

AccessRules::AccessRules(std::shared_ptr<const Tree> tree,
                         std::shared_ptr<const Instances> instances, const NodeLink &user,
                         const NodeLink &guestRole)
    : m_tree(std::move(tree)), m_instances(std::move(instances))
{
    const auto *person = dynamic_cast<const securityUser *>(user.GetNode());
    if (!person || !person->isEnabled()) {
        addRole(guestRole);
        return;
    }
    m_user = user;
    m_userName = person->GetName();
    for (const NodeLink &role : person->GetRoles())
        addRole(role);
}

std::shared_ptr<const AccessRules>
AccessRules::With(std::shared_ptr<const Instances> instances) const
{
    auto rules = std::make_shared<AccessRules>(*this);
    rules->m_instances = std::move(instances);
    return rules;
}

void AccessRules::addRole(const NodeLink &role)
{
    const ConfigNode *node = role.GetNode();
    if (!node)
        return;
    for (const auto &child : node->Children()) {
        if (const auto *grant = dynamic_cast<const securityGrant *>(child.get()))
            m_rules[grant->GetScope().GetNodeId()].push_back(
                {grant->GetPrivileges(), grant->isDenial(), grant->GetNodeLink()});
    }
}

enNodePrivMode AccessRules::decideAt(enPrivilegeType privilege, unsigned long scope,
                                     NodeLink *by) const
{
    enNodePrivMode mode = PrivModeNoRule;
    const auto found = m_rules.find(scope);
    if (found == m_rules.end())
        return mode;
    for (const Rule &rule : found->second) {
        if (!rule.privileges.Contains(privilege))
            continue;
        if (by && (rule.isDenial || mode == PrivModeNoRule))
            *by = rule.grant;
        if (rule.isDenial)
            return PrivModeDenied;
        mode = PrivModeGranted;
    }
    return mode;
}

enNodePrivMode AccessRules::Decide(enPrivilegeType privilege, unsigned long nodeId,
                                   NodeLink *by) const
{
    if (!m_tree->speaksOfUsers)
        return PrivModeUnchecked;
    unsigned long id = nodeId;
    for (auto at = m_instances->places.find(id); at != m_instances->places.end();
         at = m_instances->places.find(id)) {
        const enNodePrivMode mode = decideAt(privilege, at->second.original, by);
        if (mode != PrivModeNoRule)
            return mode;
        id = at->second.parent;
    }
    if (id != nodeId && m_tree->parents.count(id) == 0)
        return PrivModeDenied; // the template is gone, and with it what it stood below
    while (id != 0) {
        const enNodePrivMode mode = decideAt(privilege, id, by);
        if (mode != PrivModeNoRule)
            return mode;
        const auto parent = m_tree->parents.find(id);
        id = parent == m_tree->parents.end() ? 0 : parent->second;
    }
    return decideAt(privilege, 0, by);
}

} // namespace Nodes
