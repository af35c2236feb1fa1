#include "widgets/windows/navigation/ShownPlace.h"

#include "widgets/windows/navigation/NavigationRoad.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/actions/BasicTemplateAction.h"
#include "nodes/alarms/BasicAlarm.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/templates/TemplateBinding.h"
#include "nodes/templates/templateArgument.h"
#include "nodes/templates/templateParameter.h"
#include "nodes/templates/widgetInstance.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicLayer.h"
#include "nodes/visual/windows/BasicWindow.h"

#include <algorithm>
#include <tuple>

namespace Widgets {

using Nodes::BasicSignal;
using Nodes::BasicWidget;
using Nodes::ConfigNode;

namespace {

using Places = std::vector<ShownPlace>;

/// What an element that refers to a node shows of it.
struct Use
{
    const BasicWidget *element = nullptr;
    bool isOwnSignal = false;
};

/// What an element or a part of it refers to; what its actions refer to it does not show.
Use elementOf(const Nodes::LinkUse &use)
{
    const ConfigNode *node = use.node.GetNode();
    for (; node; node = node->GetParent()) {
        if (dynamic_cast<const Nodes::BasicAction *>(node))
            return {};
        if (const auto *element = dynamic_cast<const BasicWidget *>(node)) {
            const bool isOwn = element->GetId() == use.node.GetNodeId();
            return {element, isOwn && use.valueId == BasicWidget::Prop::Signal};
        }
    }
    return {};
}

/// The window or composition that the element is drawn on; null when it is never seen.
const ConfigNode *drawnOn(const BasicWidget &element)
{
    if (!element.isVisible())
        return nullptr;
    for (const ConfigNode *node = element.GetParent(); node; node = node->GetParent()) {
        const auto *layer = dynamic_cast<const Nodes::BasicLayer *>(node);
        if (layer && !layer->isVisible())
            return nullptr;
        if (dynamic_cast<const Nodes::BasicWindow *>(node) ||
            dynamic_cast<const Nodes::BasicComposition *>(node))
            return node;
    }
    return nullptr;
}

long areaOf(const BasicWidget &element)
{
    const Nodes::NRect place = element.GetGeometry();
    return long(place.width) * place.height;
}

void addPlaces(const Use &use, unsigned long signal, const std::vector<NavigationRoad> &roads,
               Places &places)
{
    for (const NavigationRoad &road : roads) {
        places.push_back({road.kind, use.isOwnSignal, areaOf(*use.element), signal,
                          use.element->GetNodeLink(), road.window, road.actions});
    }
}

void addElement(const Use &use, unsigned long signal, Places &places)
{
    const ConfigNode *ground = use.element ? drawnOn(*use.element) : nullptr;
    if (ground)
        addPlaces(use, signal, NavigationRoad::to(*ground), places);
}

/// Elements of the action's template that show a parameter which stands for the signal.
void addInstance(const Nodes::BasicTemplateAction &action, const BasicSignal &signal,
                 Places &places)
{
    const ConfigNode *source = action.GetTemplate();
    const auto roads = source ? NavigationRoad::by(action) : std::vector<NavigationRoad>();
    if (roads.empty())
        return;
    const Nodes::NodesCollection &project = *source->GetNodesCollection();
    for (const auto &[parameter, actual] :
         Nodes::TemplateBinding(*source, action.GetArguments()).GetIds()) {
        if (actual != signal.GetId())
            continue;
        for (const Nodes::LinkUse &each : project.FindUses(Nodes::NodeLink(parameter, &project))) {
            const Use use = elementOf(each);
            if (use.element && drawnOn(*use.element) == source)
                addPlaces(use, actual, roads, places);
        }
    }
}

/// An instance on a screen, when the signal is among those given to it.
void addInstance(const Nodes::widgetInstance &element, const BasicSignal &signal, Places &places)
{
    const ConfigNode *source = element.GetTemplate();
    if (!source)
        return;
    const Nodes::IdMap ids = Nodes::TemplateBinding(*source, element.GetArguments()).GetIds();
    const bool isGiven = std::any_of(ids.begin(), ids.end(), [&signal](const auto &bound) {
        return bound.second == signal.GetId();
    });
    if (isGiven)
        addElement({&element, true}, 0, places); // whichever argument gives it
}

const ConfigNode *templateAround(const ConfigNode &parameter)
{
    const ConfigNode *node = &parameter;
    while (dynamic_cast<const Nodes::templateParameter *>(node))
        node = node->GetParent();
    return node;
}

/// Actions that open a template for this node, or for one that the node is the default of.
void addInstances(const ConfigNode &given, const BasicSignal &signal, Places &places)
{
    const Nodes::NodesCollection &project = *given.GetNodesCollection();
    for (const Nodes::LinkUse &use : project.FindUses(given.GetNodeLink())) {
        const ConfigNode *node = use.node.GetNode();
        if (dynamic_cast<const Nodes::templateArgument *>(node)) {
            const ConfigNode *parent = node->GetParent();
            if (const auto *action = dynamic_cast<const Nodes::BasicTemplateAction *>(parent))
                addInstance(*action, signal, places);
            if (const auto *element = dynamic_cast<const Nodes::widgetInstance *>(parent))
                addInstance(*element, signal, places);
        } else if (dynamic_cast<const Nodes::templateParameter *>(node)) {
            for (const Nodes::LinkUse &of :
                 project.FindUses(templateAround(*node)->GetNodeLink())) {
                const ConfigNode *user = of.node.GetNode();
                if (const auto *action = dynamic_cast<const Nodes::BasicTemplateAction *>(user))
                    addInstance(*action, signal, places);
            }
        }
    }
}

void addSignal(const BasicSignal &signal, Places &places)
{
    for (const Nodes::LinkUse &use : signal.GetNodesCollection()->FindUses(signal.GetNodeLink()))
        addElement(elementOf(use), signal.GetId(), places);
    // A parameter below another one stands for what is below the node that was given.
    for (const ConfigNode *given = &signal; given; given = given->GetParent())
        addInstances(*given, signal, places);
}

void addBelow(const ConfigNode &source, Places &places)
{
    for (const Nodes::NodeLink &link : source.GetNodes(true)) {
        const auto *signal = dynamic_cast<const BasicSignal *>(link.GetNode());
        if (signal)
            addSignal(*signal, places);
        if (!places.empty())
            return;
    }
}

auto rank(const ShownPlace &place)
{
    return std::tuple(!place.isOwnSignal, place.kind, -place.area, place.element.GetNodeId());
}

} // namespace

std::vector<ShownPlace> ShownPlace::of(const ConfigNode &source)
{
    Places places;
    if (!source.GetNodesCollection())
        return places;
    const auto *alarm = dynamic_cast<const Nodes::BasicAlarm *>(&source);
    const auto *signal = alarm ? alarm->GetSignal() : dynamic_cast<const BasicSignal *>(&source);
    if (signal)
        addSignal(*signal, places);
    else if (const auto *element = dynamic_cast<const BasicWidget *>(&source))
        addElement({element, true}, 0, places);
    else
        addBelow(source, places);
    std::stable_sort(places.begin(), places.end(),
                     [](const auto &a, const auto &b) { return rank(a) < rank(b); });
    return places;
}

bool ShownPlace::refersTo(const ConfigNode &element, unsigned long signal)
{
    if (dynamic_cast<const Nodes::BasicAction *>(&element))
        return false;
    bool isFound = false;
    VisitLinks(element, *element.GetKind(), [&](const auto &, const Nodes::NodeLink &link) {
        isFound = isFound || link.GetNodeId() == signal;
    });
    return isFound || std::any_of(element.Children().begin(), element.Children().end(),
                                  [&](const auto &child) { return refersTo(*child, signal); });
}

} // namespace Widgets
