#include "editor/users/UserEdits.h"

#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/auth/PrivilegeSet.h"
#include "nodes/auth/securityGrant.h"
#include "nodes/auth/securityUser.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/RemoveNodeLinkGroup.h"

#include <QCoreApplication>

#include <algorithm>

namespace Editor::UserEdits {

using Nodes::NodeLink;
using Nodes::securityGrant;
using Nodes::securityUser;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Editor::UserEdits", text);
}

template <class Node> const Node *nodeAs(const NodeLink &link)
{
    return dynamic_cast<const Node *>(link.GetNode());
}

bool push(Workspace &workspace, const NodeLink &node, unsigned valueId, boost::any value,
          const QString &text)
{
    auto *command = new Utils::ChangePropertyCommand(node, valueId, std::move(value));
    command->setText(text);
    return workspace.push(command);
}

QString nameOf(const NodeLink &node)
{
    return QString::fromStdString(node.GetLinkName());
}

} // namespace

NodeLink add(Workspace &workspace, const NodeLink &parent, Nodes::NodeType kind,
             const QString &name)
{
    Nodes::NodesCollection *project = parent.GetNodesCollection();
    const Nodes::KindInfo *info = Nodes::KindTable::Instance().Find(kind);
    if (!project || !info)
        return {};
    std::unique_ptr<Nodes::ConfigNode> node = project->CreateDetached(*info);
    node->SetName(name.toStdString());
    const NodeLink link = node->GetNodeLink();
    if (!project->HoldClone(node, true))
        return {};
    if (workspace.push(new Utils::AddNodeLinkCommand(link, parent)))
        return link;
    project->TakeClone(link);
    return {};
}

bool setPassword(Workspace &workspace, const NodeLink &user, const QString &password)
{
    std::string hash;
    if (!password.isEmpty())
        hash = Nodes::systemAuthentication::HashPassword(password.toStdString());
    if (hash.empty() && !password.isEmpty()) {
        workspace.tell(Workspace::Error, tr("Пароль не задан: не хватает памяти для его "
                                            "защиты. Закройте лишние программы и повторите."));
        return false;
    }
    const QString text = hash.empty() ? tr("Пароль пользователя %1 убран").arg(nameOf(user))
                                      : tr("Новый пароль пользователя %1").arg(nameOf(user));
    return push(workspace, user, securityUser::Prop::PasswordHash, hash, text);
}

bool setRole(Workspace &workspace, const NodeLink &user, const NodeLink &role, bool has)
{
    const auto *person = nodeAs<securityUser>(user);
    if (!person)
        return false;
    Nodes::NodeLinks roles = person->GetRoles();
    roles.erase(std::remove(roles.begin(), roles.end(), role), roles.end());
    if (has)
        roles.push_back(role);
    return push(workspace, user, securityUser::Prop::Roles, roles,
                tr("Роли пользователя %1").arg(nameOf(user)));
}

bool setPrivilege(Workspace &workspace, const NodeLink &grant, int privilege, bool has)
{
    const auto *rule = nodeAs<securityGrant>(grant);
    if (!rule)
        return false;
    const Nodes::PrivilegeSet before = rule->GetPrivileges();
    std::string text;
    bool isAll = true;
    for (int type = Nodes::PrivilegeView; type <= Nodes::PrivilegeConfigure; ++type) {
        const auto known = Nodes::enPrivilegeType(type);
        if (type == privilege ? has : before.Contains(known))
            text += (text.empty() ? "" : " ") + Nodes::PrivilegeToken(known);
        else
            isAll = false;
    }
    return push(workspace, grant, securityGrant::Prop::Privileges,
                isAll ? std::string("all") : text, tr("Права правила %1").arg(nameOf(grant)));
}

bool setScope(Workspace &workspace, const NodeLink &grant, const NodeLink &scope)
{
    return push(workspace, grant, securityGrant::Prop::Scope, scope,
                tr("Область правила %1").arg(nameOf(grant)));
}

bool setDenial(Workspace &workspace, const NodeLink &grant, bool isDenial)
{
    return push(workspace, grant, securityGrant::Prop::Mode, int(isDenial),
                tr("Действие правила %1").arg(nameOf(grant)));
}

bool remove(Workspace &workspace, const Nodes::NodeLinks &nodes)
{
    const Nodes::ConfigNode *root = workspace.session().root();
    return root && !nodes.empty() &&
           workspace.push(new Utils::RemoveNodeLinkGroup(root->GetNodeLink(), nodes));
}

} // namespace Editor::UserEdits
