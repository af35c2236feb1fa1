#include "apps/station/PictureTargets.h"

#include "apps/common/desktop/DataDirectory.h"

#include "nodes/actions/BasicTemplateAction.h"
#include "nodes/actions/kinds/actionChangeComposition.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/templates/compositionTemplate.h"
#include "nodes/templates/templateArgument.h"
#include "nodes/templates/templateParameter.h"
#include "nodes/templates/windowTemplate.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/windowComposed.h"

#include <algorithm>

namespace Station {

namespace {

template <class Kind>
std::vector<Kind *> allOf(const Nodes::NodesCollection &project, Nodes::NodeType::enNodeType family)
{
    Nodes::NodeLinks links;
    project.FindNodes(family, &links);
    std::vector<Kind *> nodes;
    for (const Nodes::NodeLink &link : links) {
        auto *node = dynamic_cast<Kind *>(link.GetNode());
        if (node && node->IsLocal())
            nodes.push_back(node);
    }
    return nodes;
}

bool isListed(const std::vector<PictureTarget> &targets, const Nodes::BasicComposition *composition,
              const Nodes::BasicWindow *window)
{
    return std::any_of(targets.begin(), targets.end(), [=](const PictureTarget &target) {
        return target.composition == composition && (!window || target.window == window);
    });
}

using Changes = std::vector<Nodes::actionChangeComposition *>;

void addComposed(Nodes::windowComposed &window, const Changes &changes,
                 std::vector<PictureTarget> &targets)
{
    const auto add = [&](Nodes::BasicComposition *composition) {
        if (composition && !isListed(targets, composition, &window))
            targets.push_back({&window, composition});
    };
    add(window.GetComposition());
    for (const Nodes::actionChangeComposition *change : changes) {
        if (change->GetWindow() == &window)
            add(change->GetComposition());
    }
}

bool isTemplate(const Nodes::ConfigNode &node)
{
    return dynamic_cast<const Nodes::windowTemplate *>(&node) ||
           dynamic_cast<const Nodes::compositionTemplate *>(&node);
}

/// Whether its arguments are nodes of the plant, not parameters of another template.
bool isComplete(const Nodes::BasicTemplateAction &action)
{
    const auto arguments = action.GetArguments();
    return std::none_of(arguments.begin(), arguments.end(), [](Nodes::ConfigNode *node) {
        const auto *argument = dynamic_cast<const Nodes::templateArgument *>(node);
        return argument &&
               dynamic_cast<const Nodes::templateParameter *>(argument->GetLink().GetNode());
    });
}

void addTemplates(const Nodes::NodesCollection &project, std::vector<PictureTarget> &targets)
{
    std::vector<const Nodes::ConfigNode *> pictured;
    using Action = Nodes::BasicTemplateAction;
    for (Action *action : allOf<Action>(project, Nodes::NodeType::TypeAction)) {
        const Nodes::ConfigNode *source = action->GetTemplate();
        const bool isKnown = std::count(pictured.begin(), pictured.end(), source) != 0;
        if (!source || isKnown || !isComplete(*action))
            continue;
        pictured.push_back(source);
        targets.push_back({nullptr, nullptr, action});
    }
}

} // namespace

const Nodes::ConfigNode &PictureTarget::content() const
{
    if (opening)
        return *opening->GetTemplate();
    if (composition)
        return *composition;
    return *window;
}

QString PictureTarget::fileName() const
{
    const QString name = Host::fileNameFrom(QString::fromStdString(content().GetName()));
    const QString id = QString::number(content().GetId());
    // The same composition may be pictured in several windows.
    return composition && window ? QStringLiteral("%1-%2-%3").arg(name, id).arg(window->GetId())
                                 : QStringLiteral("%1-%2").arg(name, id);
}

int countMissingValues(const Nodes::ConfigNode &shown)
{
    const Nodes::NodeLinks nodes = shown.GetNodes(true);
    return int(std::count_if(nodes.begin(), nodes.end(), [](const Nodes::NodeLink &link) {
        const auto *widget = dynamic_cast<const Nodes::BasicWidget *>(link.GetNode());
        return widget && !widget->GetSignalLink().isEmpty() && widget->GetValue().IsEmpty();
    }));
}

std::vector<PictureTarget> pictureTargets(const Nodes::NodesCollection &project)
{
    using Nodes::NodeType;
    const auto changes = allOf<Nodes::actionChangeComposition>(project, NodeType::TypeAction);
    std::vector<PictureTarget> targets;
    Nodes::windowComposed *firstComposed = nullptr;
    for (Nodes::BasicWindow *window : allOf<Nodes::BasicWindow>(project, NodeType::TypeWindow)) {
        auto *composed = dynamic_cast<Nodes::windowComposed *>(window);
        if (isTemplate(*window))
            continue;
        if (!composed) {
            targets.push_back({window, nullptr});
            continue;
        }
        firstComposed = firstComposed ? firstComposed : composed;
        addComposed(*composed, changes, targets);
    }
    addTemplates(project, targets);
    if (!firstComposed)
        return targets;
    for (auto *composition : allOf<Nodes::BasicComposition>(project, NodeType::TypeComposition)) {
        if (!isTemplate(*composition) && !isListed(targets, composition, nullptr))
            targets.push_back({firstComposed, composition});
    }
    return targets;
}

} // namespace Station
