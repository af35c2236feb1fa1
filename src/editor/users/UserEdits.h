#pragma once

#include "nodes/model/NodeType.h"
#include "nodes/model/links/NodeLink.h"

#include <QString>

namespace Editor {

class Workspace;

/// Edits of users, roles and rules, each one step of the history. GUI thread.
namespace UserEdits {

/// Adds a node of that kind with a free name like `name`; the empty link when it was refused.
Nodes::NodeLink add(Workspace &workspace, const Nodes::NodeLink &parent, Nodes::NodeType kind,
                    const QString &name);
/// Gives the user a password: kept is its Argon2id hash only, the text nowhere. An empty one takes
/// the password away. Takes some 0.1 s. False when it was refused.
bool setPassword(Workspace &workspace, const Nodes::NodeLink &user, const QString &password);
/// Gives the user the role or takes it away.
bool setRole(Workspace &workspace, const Nodes::NodeLink &user, const Nodes::NodeLink &role,
             bool has);
/// Puts the privilege into the rule or takes it out.
bool setPrivilege(Workspace &workspace, const Nodes::NodeLink &grant, int privilege, bool has);
/// The empty link: the whole project.
bool setScope(Workspace &workspace, const Nodes::NodeLink &grant, const Nodes::NodeLink &scope);
bool setDenial(Workspace &workspace, const Nodes::NodeLink &grant, bool isDenial);
/// Removes users, roles or rules with the links to them.
bool remove(Workspace &workspace, const Nodes::NodeLinks &nodes);

} // namespace UserEdits

} // namespace Editor
