#include "utils/undo/ReplaceLinksCommand.h"

#include "utils/undo/ChangePropertyCommand.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/BasicProperty.h"

#include <algorithm>
#include <map>

namespace Utils {

namespace {

using Place = std::pair<Nodes::NodeLink, unsigned>;
using Targets = std::vector<std::pair<Nodes::NodeLink, Nodes::NodeLink>>;

Nodes::NodeLink replaced(const Nodes::NodeLink &link, const Targets &targets)
{
    const auto found = std::find_if(targets.begin(), targets.end(),
                                    [&link](const auto &target) { return target.first == link; });
    return found == targets.end() ? link : found->second;
}

Nodes::NodeLinks replaced(const Nodes::NodeLinks &links, const Targets &targets)
{
    Nodes::NodeLinks result;
    for (const Nodes::NodeLink &link : links) {
        const Nodes::NodeLink to = replaced(link, targets);
        const bool isNew = std::any_of(targets.begin(), targets.end(),
                                       [&to](const auto &target) { return target.second == to; });
        const bool isThere = std::find(result.begin(), result.end(), to) != result.end();
        if (!to.isEmpty() && !(isNew && isThere))
            result.push_back(to);
    }
    return result;
}

/// Empty when the property holds no links.
boost::any newValue(const boost::any &value, const Targets &targets)
{
    if (const auto *link = boost::any_cast<Nodes::NodeLink>(&value))
        return replaced(*link, targets);
    if (const auto *links = boost::any_cast<Nodes::NodeLinks>(&value))
        return replaced(*links, targets);
    return {};
}

} // namespace

ReplaceLinksCommand::ReplaceLinksCommand(const std::vector<LinkReplacement> &links,
                                         QUndoCommand *parent)
    : CommandGroup(QStringLiteral("Замена ссылок"), parent)
{
    // Several links of one property are one change of it.
    std::map<Place, Targets> places;
    for (const LinkReplacement &link : links)
        places[{link.node, link.valueId}].emplace_back(link.from, link.to);
    for (const auto &[place, targets] : places) {
        const Nodes::ConfigNode *node = place.first.GetNode();
        const Nodes::BasicProperty *property =
            node ? node->GetPropertyByValueId(place.second) : nullptr;
        const boost::any value =
            property ? newValue(property->GetPropertyValue(), targets) : boost::any();
        new ChangePropertyCommand(place.first, place.second, value, this);
    }
}

ReplaceLinksCommand::~ReplaceLinksCommand() = default;

} // namespace Utils
