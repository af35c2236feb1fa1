#include "nodes/serial/ElementPath.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"

namespace Nodes {

std::string ElementPath::Join(const std::string &kind, const std::string &name,
                              const std::string &below)
{
    const std::string part = name.empty() ? kind : kind + "[" + name + "]";
    return below.empty() ? part : part + "/" + below;
}

std::string ElementPath::Of(const ConfigNode &node)
{
    std::string path;
    for (const ConfigNode *at = &node; at; at = at->GetParent())
        path = Join(at->GetKind()->key, at->GetName(), path);
    return path;
}

} // namespace Nodes
