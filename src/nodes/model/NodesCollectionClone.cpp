#include "nodes/model/BasicNodeRare.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"

#include <atomic>
#include <utility>

namespace Nodes {

namespace {

bool hasAncestorIn(const ConfigNode &node, const NodesArray &nodes)
{
    for (const ConfigNode *above = node.GetParent(); above; above = above->GetParent()) {
        if (nodes.Contains(NodeLink(above)))
            return true;
    }
    return false;
}

unsigned long sizeOf(const ConfigNode &subtree)
{
    unsigned long size = 1;
    for (const auto &child : subtree.Children())
        size += sizeOf(*child);
    return size;
}

/// What `count` ids for nodes that are never saved come after. They lie beyond those of files, so
/// that showing a project leaves what its file says about ids as it was.
unsigned long unsavedIds(unsigned long count)
{
    static std::atomic<unsigned long> last{NodesCollection::FreshIdLimit};
    return last.fetch_add(count);
}

} // namespace

void NodesCollection::renumber(ConfigNode &subtree,
                               std::unordered_map<unsigned long, unsigned long> &ids)
{
    const unsigned long fresh = NewId();
    ids[subtree.m_id] = fresh;
    subtree.m_id = fresh;
    for (const auto &child : subtree.Children())
        renumber(*child, ids);
}

Result NodesCollection::HoldClone(std::unique_ptr<ConfigNode> &node, bool renameOnInsert)
{
    const Result remembered = remember(*node);
    if (!remembered) {
        forget(*node);
        return remembered;
    }
    const unsigned long id = node->m_id;
    node->setParent(nullptr);
    m_clones[id] = std::move(node);
    if (renameOnInsert)
        m_renameOnInsert.insert(id);
    return Result();
}

ConfigNode *NodesCollection::Instantiate(const ConfigNode &source, ConfigNode &below,
                                         std::string name, IdMap replaced)
{
    std::unique_ptr<ConfigNode> copy = NodesArray::CreateNodeCopy(source.GetNodeType(), &source);
    IdMap ids;
    const unsigned long saved = std::exchange(m_lastId, unsavedIds(sizeOf(*copy)));
    renumber(*copy, ids);
    m_lastId = saved;
    const IdMap made = ids;
    for (const auto &[from, to] : replaced)
        ids[from] = to;
    RemapLinks(*copy, ids);
    copy->SetName(std::move(name));
    ConfigNode *instance = copy.get();
    if (!HoldClone(copy, false))
        return nullptr;
    instance->rare().originalsParent = NodeLink(&below); // which may go before the instance
    for (const auto &[original, fresh] : made)
        m_originals.emplace(fresh, original);
    ++m_instanceRevision;
    return instance;
}

std::vector<const ConfigNode *> NodesCollection::GetInstances() const
{
    std::vector<const ConfigNode *> instances;
    if (m_originals.empty())
        return instances;
    for (const auto &[id, clone] : m_clones) {
        if (m_originals.count(id) != 0)
            instances.push_back(clone.get());
    }
    return instances;
}

unsigned long NodesCollection::GetOriginal(unsigned long id) const
{
    const auto found = m_originals.find(id);
    return found == m_originals.end() ? 0 : found->second;
}

Result NodesCollection::CloneNodes(const NodesArray &nodes, NodesArray &clones, bool adopt)
{
    IdMap ids;
    std::vector<std::unique_ptr<ConfigNode>> copies;
    for (const NodeLink &link : nodes) {
        const ConfigNode *source = link.GetNode();
        if (!source || source->GetNodesCollection() != this)
            return Result(Result::NotFound, "node " + std::to_string(link.GetNodeId()));
        if (hasAncestorIn(*source, nodes))
            continue; // comes with its ancestor's copy
        copies.push_back(NodesArray::CreateNodeCopy(source->GetNodeType(), source));
        renumber(*copies.back(), ids);
    }
    for (auto &copy : copies) {
        RemapLinks(*copy, ids);
        const NodeLink link(copy.get());
        const Result held = HoldClone(copy, adopt);
        if (!held)
            return held;
        clones.push_back(link);
    }
    return Result();
}

} // namespace Nodes
