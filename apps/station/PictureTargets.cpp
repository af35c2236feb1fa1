#include "apps/station/PictureTargets.h"

#include "apps/station/DataDirectory.h"

#include "nodes/actions/actionChangeComposition.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/visual/BasicComposition.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windowComposed.h"

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
        if (auto *node = dynamic_cast<Kind *>(link.GetNode()))
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

} // namespace

const Nodes::ConfigNode &PictureTarget::content() const
{
    if (composition)
        return *composition;
    return *window;
}

QString PictureTarget::fileName() const
{
    const QString name = fileNameFrom(QString::fromStdString(content().GetName()));
    const QString id = QString::number(content().GetId());
    // The same composition may be pictured in several windows.
    return composition ? QStringLiteral("%1-%2-%3").arg(name, id).arg(window->GetId())
                       : QStringLiteral("%1-%2").arg(name, id);
}

int PictureTarget::countMissingValues() const
{
    const Nodes::NodeLinks nodes = content().GetNodes(true);
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
        if (!composed) {
            targets.push_back({window, nullptr});
            continue;
        }
        firstComposed = firstComposed ? firstComposed : composed;
        addComposed(*composed, changes, targets);
    }
    if (!firstComposed)
        return targets;
    for (auto *composition : allOf<Nodes::BasicComposition>(project, NodeType::TypeComposition)) {
        if (!isListed(targets, composition, nullptr))
            targets.push_back({firstComposed, composition});
    }
    return targets;
}

} // namespace Station
