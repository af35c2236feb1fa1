#include "widgets/scene/editing/groups/GroupScope.h"

#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/GroupPath.h"

#include <map>
#include <utility>

namespace Widgets {

bool GroupScope::isIn(const Nodes::BasicWidget &element) const
{
    return group.empty() ||
           (element.GetParent() == layer && Nodes::GroupPath::IsIn(group, element.GetGroup()));
}

std::string GroupScope::outerOf(const Nodes::BasicWidget &element) const
{
    return isIn(element) ? group : std::string();
}

std::string GroupScope::unitOf(const Nodes::BasicWidget &element) const
{
    // Most elements are in no group.
    return element.GetGroup().empty()
               ? std::string()
               : Nodes::GroupPath::Step(outerOf(element), element.GetGroup());
}

std::vector<std::vector<Nodes::BasicWidget *>>
GroupScope::units(const std::vector<Nodes::BasicWidget *> &elements) const
{
    std::vector<std::vector<Nodes::BasicWidget *>> units;
    std::map<std::pair<const Nodes::ConfigNode *, std::string>, std::size_t> known;
    for (Nodes::BasicWidget *element : elements) {
        const std::string unit = unitOf(*element);
        std::size_t place = units.size();
        if (!unit.empty())
            place = known.emplace(std::make_pair(element->GetParent(), unit), place).first->second;
        if (place == units.size())
            units.emplace_back();
        units[place].push_back(element);
    }
    return units;
}

} // namespace Widgets
