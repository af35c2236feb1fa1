#include "editor/users/StandardRoles.h"

#include "editor/wizard/NodeRecipe.h"

#include "nodes/auth/securityUser.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/CommandGroup.h"

namespace Editor::StandardRoles {

using Nodes::NodeLink;

namespace {

NodeRecipe role(const char *name, const char *rule, const char *privileges)
{
    NodeRecipe grant(QStringLiteral("grant"), QString::fromUtf8(rule));
    grant.set(QStringLiteral("privileges"), QLatin1String(privileges));
    NodeRecipe recipe(QStringLiteral("role"), QString::fromUtf8(name));
    return recipe.add(grant);
}

NodeRecipe user(const char *name, const char *fullName)
{
    NodeRecipe recipe(QStringLiteral("user"), QLatin1String(name));
    return recipe.set(QStringLiteral("fullName"), QString::fromUtf8(fullName));
}

} // namespace

QUndoCommand *add(const NodeLink &station, NodeLink &made)
{
    NodeRecipe users(QStringLiteral("authentication"), QStringLiteral("Пользователи"));
    users.add(role("Гость", "Смотреть", "view open close"));
    users.add(role("Оператор", "Управлять", "view open close write command acknowledge shelve"));
    users.add(role("Инженер", "Всё", "all"));
    users.add(user("operator", "Оператор смены")).add(user("engineer", "Инженер"));
    made = users.make(*station.GetNodesCollection());
    auto *group = new Utils::CommandGroup(QStringLiteral("Добавление пользователей и прав"));
    new Utils::AddNodeLinkCommand(made, station, group);
    const auto child = [&made](std::size_t index) {
        return NodeLink(made->Children()[index].get());
    };
    const auto set = [group](const NodeLink &node, unsigned property, boost::any value) {
        new Utils::ChangePropertyCommand(node, property, std::move(value), group);
    };
    set(made, Nodes::systemAuthentication::Prop::GuestRole, child(0));
    set(child(3), Nodes::securityUser::Prop::Roles, Nodes::NodeLinks{child(1)});
    set(child(4), Nodes::securityUser::Prop::Roles, Nodes::NodeLinks{child(2)});
    return group;
}

} // namespace Editor::StandardRoles
