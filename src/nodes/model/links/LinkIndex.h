#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Nodes {

/// Which nodes refer to which, by id, and which to which files. Knows nothing of the nodes: it is
/// told of the links of each as a whole. Its size is that of the links. GUI thread.
class LinkIndex
{
public:
    /// What one node refers to; repetitions do not count.
    struct Links
    {
        std::vector<unsigned long> targets;
        std::vector<std::string> files;
    };

    void Enter(unsigned long node, const Links &links);
    /// `links` are those the node entered with.
    void Leave(unsigned long node, const Links &links);

    /// Ids in ascending order.
    std::vector<unsigned long> FindReferrers(unsigned long target) const;
    std::vector<unsigned long> FindReferrers(const std::string &file) const;
    std::size_t GetSize() const { return m_nodes.size() + m_files.size(); }

private:
    // Target first, referrer second. Sets: one signal may have as many referrers as there are
    // elements, and all of them may leave one by one.
    std::set<std::pair<unsigned long, unsigned long>> m_nodes;
    std::set<std::pair<std::string, unsigned long>> m_files;
};

} // namespace Nodes
