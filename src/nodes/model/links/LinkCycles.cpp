#include "nodes/model/links/LinkCycles.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"

#include <unordered_map>

namespace Nodes {

namespace {

struct Edge
{
    const PropertyDescriptor *property;
    const ConfigNode *target;
};

std::vector<Edge> edgesOf(const ConfigNode &node)
{
    std::vector<Edge> edges;
    const NodesCollection *project = node.GetNodesCollection();
    if (!project || !node.GetKind())
        return edges;
    VisitLinks(node, *node.GetKind(), [&](const PropertyDescriptor &d, const NodeLink &link) {
        const ConfigNode *target = d.isAcyclic ? project->FindNode(link.GetNodeId()) : nullptr;
        if (target)
            edges.push_back({&d, target});
    });
    return edges;
}

/// Depth-first walk with its own stack: chains of links may be as long as the project.
class CycleWalk
{
public:
    void From(const ConfigNode *start)
    {
        enter(start);
        while (!m_stack.empty()) {
            Frame &top = m_stack.back();
            if (top.next == top.edges.size()) {
                m_isOpen[top.node] = false;
                m_stack.pop_back();
            } else {
                follow(top.node, top.edges[top.next++]);
            }
        }
    }
    std::vector<LinkCycle> found;

private:
    struct Frame
    {
        const ConfigNode *node;
        std::vector<Edge> edges;
        std::size_t next;
    };

    void enter(const ConfigNode *node)
    {
        std::vector<Edge> edges = edgesOf(*node);
        if (edges.empty() || !m_isOpen.emplace(node, true).second)
            return;
        m_stack.push_back({node, std::move(edges), 0});
    }
    void follow(const ConfigNode *from, const Edge &edge)
    {
        const auto visited = m_isOpen.find(edge.target);
        if (visited == m_isOpen.end())
            enter(edge.target);
        else if (visited->second)
            found.push_back({from, edge.property, edge.target});
    }

    std::unordered_map<const ConfigNode *, bool> m_isOpen; // true while on the stack
    std::vector<Frame> m_stack;
};

} // namespace

std::vector<LinkCycle> FindLinkCycles(const std::vector<const ConfigNode *> &nodes)
{
    CycleWalk walk;
    for (const ConfigNode *node : nodes)
        walk.From(node);
    return std::move(walk.found);
}

} // namespace Nodes
