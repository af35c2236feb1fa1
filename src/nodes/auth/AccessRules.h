#pragma once

#include "nodes/auth/PrivilegeSet.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/model/services/AuthPriv.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace Nodes {

class ConfigNode;
class NodesCollection;

/// Everything that decides on access for one session: who is logged in, the rules of their roles
/// and the shape of the tree. Built on the GUI thread, immutable and safe to read on any thread.
class AccessRules
{
public:
    /// Parent id by node id.
    using Parents = std::unordered_map<unsigned long, unsigned long>;

    /// What the tree holds that matters here; collected again when the tree changes.
    struct Tree
    {
        unsigned long revision = 0;
        Parents parents;
        std::vector<NodeLink> securityNodes; ///< users, roles and grants
        bool speaksOfUsers = false;          ///< see SpeaksOfUsers
    };

    /// Nodes of open templates. They come and go with every faceplate, so they are looked at apart
    /// from the tree.
    struct Instances
    {
        struct Place
        {
            unsigned long parent;
            unsigned long original; ///< rules of that node count here too
        };
        unsigned long revision = 0;
        std::unordered_map<unsigned long, Place> places;
    };

    static std::shared_ptr<const Tree> Survey(const NodesCollection &project);
    static std::shared_ptr<const Instances> SurveyInstances(const NodesCollection &project);
    /// Rules of the user's roles, or of `guestRole` when `user` is empty.
    AccessRules(std::shared_ptr<const Tree> tree, std::shared_ptr<const Instances> instances,
                const NodeLink &user, const NodeLink &guestRole);
    /// These rules with other instances.
    std::shared_ptr<const AccessRules> With(std::shared_ptr<const Instances> instances) const;

    /// `by`: where to put the grant that decides; empty when none does.
    enNodePrivMode Decide(enPrivilegeType privilege, unsigned long nodeId,
                          NodeLink *by = nullptr) const;
    const std::shared_ptr<const Tree> &GetTree() const { return m_tree; }
    const std::shared_ptr<const Instances> &GetInstances() const { return m_instances; }
    const NodeLink &GetUser() const { return m_user; }
    const std::string &GetUserName() const { return m_userName; }

private:
    struct Rule
    {
        PrivilegeSet privileges;
        bool isDenial;
        NodeLink grant;
    };

    void addRole(const NodeLink &role);
    enNodePrivMode decideAt(enPrivilegeType privilege, unsigned long scope, NodeLink *by) const;

    std::shared_ptr<const Tree> m_tree;
    std::shared_ptr<const Instances> m_instances;
    NodeLink m_user;
    std::string m_userName;
    std::unordered_map<unsigned long, std::vector<Rule>> m_rules; // by scope; 0: whole project
};

} // namespace Nodes
