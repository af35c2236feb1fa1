#include "utils/models/SortNodeTypes.h"

#include <algorithm>

namespace Utils {

std::vector<std::vector<Nodes::NodeType>> SortNodeTypes(const std::vector<Nodes::NodeType> &types)
{
    std::vector<std::vector<Nodes::NodeType>> groups;
    for (const Nodes::NodeType &type : types) {
        const auto isOwn = [&type](const auto &group) {
            return group.front().GetFamily() == type.GetFamily();
        };
        auto group = std::find_if(groups.begin(), groups.end(), isOwn);
        if (group == groups.end())
            groups.push_back({type});
        else if (std::find(group->begin(), group->end(), type) == group->end())
            group->push_back(type);
    }
    return groups;
}

} // namespace Utils
