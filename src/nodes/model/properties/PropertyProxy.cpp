#include "nodes/model/properties/PropertyProxy.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/BasicProperty.h"

#include <algorithm>

namespace Nodes {

void PropertyProxy::AddNode(const NodeLink &node)
{
    if (node.isValid() && !m_nodes.Contains(node))
        m_nodes.push_back(node);
}

std::vector<BasicProperty *> PropertyProxy::GetProperties() const
{
    std::vector<BasicProperty *> common;
    bool isFirst = true;
    for (const NodeLink &link : m_nodes) {
        const ConfigNode *node = link.GetNode();
        if (!node)
            continue;
        if (isFirst)
            common = node->GetProperties();
        isFirst = false;
        const auto isMissing = [node](const BasicProperty *property) {
            return !node->GetPropertyByValueId(property->GetValueId());
        };
        common.erase(std::remove_if(common.begin(), common.end(), isMissing), common.end());
    }
    return common;
}

Result PropertyProxy::SetProperty(unsigned valueId, const boost::any &value)
{
    std::vector<std::pair<ConfigNode *, boost::any>> changed;
    for (const NodeLink &link : m_nodes) {
        ConfigNode *node = link.GetNode();
        if (!node)
            continue;
        const BasicProperty *property = node->GetPropertyByValueId(valueId);
        const boost::any old = property ? property->GetPropertyValue() : boost::any();
        const Result result = node->SetProperty(valueId, value);
        if (result) {
            changed.emplace_back(node, old);
            continue;
        }
        for (const auto &[done, previous] : changed)
            (void)done->SetProperty(valueId, previous);
        return result;
    }
    return Result();
}

} // namespace Nodes
