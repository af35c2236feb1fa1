#include "nodes/model/NodesContainer.h"

#include <algorithm>

namespace Nodes {

NodesContainer::NodesContainer(const NodesArray &nodes)
{
    for (const NodeLink &link : nodes)
        Add(link);
}

bool NodesContainer::Add(const NodeLink &link)
{
    if (link.isEmpty() || Contains(link))
        return false;
    m_links.insert(std::upper_bound(m_links.begin(), m_links.end(), link), link);
    return true;
}

bool NodesContainer::Contains(const NodeLink &link) const
{
    const auto [first, last] = std::equal_range(m_links.begin(), m_links.end(), link);
    return std::find(first, last, link) != last;
}

} // namespace Nodes
