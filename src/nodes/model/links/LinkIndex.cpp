#include "nodes/model/links/LinkIndex.h"

namespace Nodes {

namespace {

template <class Target>
std::vector<unsigned long> referrersOf(const std::set<std::pair<Target, unsigned long>> &links,
                                       const Target &target)
{
    std::vector<unsigned long> referrers;
    for (auto at = links.lower_bound({target, 0}); at != links.end() && at->first == target; ++at)
        referrers.push_back(at->second);
    return referrers;
}

} // namespace

void LinkIndex::Enter(unsigned long node, const Links &links)
{
    for (const unsigned long target : links.targets)
        m_nodes.emplace(target, node);
    for (const std::string &file : links.files)
        m_files.emplace(file, node);
}

void LinkIndex::Leave(unsigned long node, const Links &links)
{
    for (const unsigned long target : links.targets)
        m_nodes.erase({target, node});
    for (const std::string &file : links.files)
        m_files.erase({file, node});
}

std::vector<unsigned long> LinkIndex::FindReferrers(unsigned long target) const
{
    return referrersOf(m_nodes, target);
}

std::vector<unsigned long> LinkIndex::FindReferrers(const std::string &file) const
{
    return referrersOf(m_files, file);
}

} // namespace Nodes
