#include "editor/properties/values/ProjectColors.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/values/NColor.h"

#include <algorithm>
#include <map>

namespace Editor {

namespace {

void count(const Nodes::ConfigNode &node, std::map<std::string, int> &counts)
{
    if (const Nodes::KindInfo *kind = node.GetKind()) {
        for (const Nodes::PropertyDescriptor &d : kind->properties) {
            if (d.binding.type == Nodes::PropertyType::Color && !kind->IsDefault(d, node))
                ++counts[d.binding.format(d, node)];
        }
    }
    for (const auto &child : node.Children())
        count(*child, counts);
}

} // namespace

QStringList projectColors(const Nodes::NodesCollection *project, std::size_t limit)
{
    std::map<std::string, int> counts;
    if (project && project->GetRoot())
        count(*project->GetRoot(), counts);
    std::vector<std::pair<std::string, int>> used(counts.begin(), counts.end());
    std::stable_sort(used.begin(), used.end(),
                     [](const auto &l, const auto &r) { return l.second > r.second; });
    QStringList texts;
    for (std::size_t i = 0; i < std::min(limit, used.size()); ++i)
        texts << QString::fromStdString(used[i].first);
    return texts;
}

} // namespace Editor
