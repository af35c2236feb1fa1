#include "widgets/windows/navigation/NavigationRoad.h"

#include "nodes/actions/BasicOpeningAction.h"
#include "nodes/actions/kinds/actionChangeComposition.h"
#include "nodes/actions/kinds/actionChangeCompositionTemplate.h"
#include "nodes/actions/kinds/actionShowWindow.h"
#include "nodes/actions/kinds/actionWriteValue.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/templates/compositionTemplate.h"
#include "nodes/templates/windowTemplate.h"
#include "nodes/visual/windows/BasicFrame.h"
#include "nodes/visual/windows/windowComposed.h"

#include <algorithm>

namespace Widgets {

using Nodes::ConfigNode;
using Nodes::NodeLink;
using Nodes::NodeLinks;

namespace {

using Roads = std::vector<NavigationRoad>;

template <class Visitor> void forUsers(const ConfigNode &node, Visitor visit)
{
    for (const Nodes::LinkUse &use : node.GetNodesCollection()->FindUses(node.GetNodeLink())) {
        if (ConfigNode *user = use.node.GetNode())
            visit(*user);
    }
}

/// What the operator's gesture does besides may concern the plant: that is left out.
bool isNavigation(const NodeLink &link)
{
    const ConfigNode *node = link.GetNode();
    if (dynamic_cast<const Nodes::BasicOpeningAction *>(node) ||
        dynamic_cast<const Nodes::actionChangeComposition *>(node))
        return true;
    const auto *write = dynamic_cast<const Nodes::actionWriteValue *>(node);
    const auto *target =
        write ? dynamic_cast<const Nodes::BasicSignal *>(write->GetSignalLink().GetNode())
              : nullptr;
    return target && target->GetOrigin() == Nodes::SignalOrigin::Process;
}

/// The list in which the action is configured, as far as it leads somewhere.
NodeLinks listAround(const ConfigNode &action)
{
    const NodeLink self = action.GetNodeLink();
    NodeLinks list;
    forUsers(action, [&](const ConfigNode &user) {
        if (!list.empty())
            return;
        for (const Nodes::PropertyDescriptor &property : user.GetKind()->properties) {
            if (property.binding.type != Nodes::PropertyType::Links)
                continue;
            const auto &links = *static_cast<const NodeLinks *>(property.binding.data(user));
            if (std::find(links.begin(), links.end(), self) == links.end())
                continue;
            std::copy_if(links.begin(), links.end(), std::back_inserter(list), &isNavigation);
            return;
        }
    });
    return list.empty() ? NodeLinks{self} : list;
}

bool standsInFrame(const ConfigNode &window)
{
    bool isFound = false;
    forUsers(window, [&](const ConfigNode &user) {
        isFound = isFound || dynamic_cast<const Nodes::BasicFrame *>(&user);
    });
    return isFound;
}

Roads toWindow(const ConfigNode &window)
{
    if (standsInFrame(window))
        return {{ShownPlace::Frame, window.GetId(), {}}};
    Roads roads;
    forUsers(window, [&](const ConfigNode &user) {
        if (roads.empty() && dynamic_cast<const Nodes::actionShowWindow *>(&user))
            roads.push_back({ShownPlace::Window, window.GetId(), listAround(user)});
    });
    return roads;
}

void addChange(const Nodes::actionChangeComposition &action, Roads &roads)
{
    const ConfigNode *window = action.GetWindow();
    for (NavigationRoad &road : window ? toWindow(*window) : Roads()) {
        const NodeLinks change = listAround(action);
        road.actions.insert(road.actions.end(), change.begin(), change.end());
        if (road.kind == ShownPlace::Frame)
            road.kind = ShownPlace::Page;
        roads.push_back(std::move(road));
    }
}

Roads toComposition(const ConfigNode &composition)
{
    Roads roads;
    forUsers(composition, [&](const ConfigNode &user) {
        const auto *change = dynamic_cast<const Nodes::actionChangeComposition *>(&user);
        if (change && roads.empty())
            addChange(*change, roads);
    });
    if (!roads.empty())
        return roads;
    // Shown from the start, or with its window.
    forUsers(composition, [&](const ConfigNode &user) {
        if (!roads.empty() || !dynamic_cast<const Nodes::windowComposed *>(&user))
            return;
        roads = toWindow(user);
        for (NavigationRoad &road : roads)
            road.kind = road.kind == ShownPlace::Frame ? ShownPlace::Page : road.kind;
    });
    return roads;
}

} // namespace

std::vector<NavigationRoad> NavigationRoad::to(const ConfigNode &ground)
{
    if (dynamic_cast<const Nodes::windowTemplate *>(&ground) ||
        dynamic_cast<const Nodes::compositionTemplate *>(&ground))
        return {};
    const bool isWindow = dynamic_cast<const Nodes::BasicWindow *>(&ground) != nullptr;
    return isWindow ? toWindow(ground) : toComposition(ground);
}

std::vector<NavigationRoad> NavigationRoad::by(const Nodes::BasicTemplateAction &action)
{
    const ConfigNode *window = action.GetTemplate();
    if (const auto *composed =
            dynamic_cast<const Nodes::actionChangeCompositionTemplate *>(&action))
        window = composed->GetComposedWindow();
    if (!window)
        return {};
    return {{ShownPlace::Instance, window->GetId(), listAround(action)}};
}

} // namespace Widgets
