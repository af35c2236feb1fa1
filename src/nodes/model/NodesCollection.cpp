#include "nodes/model/NodesCollection.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/links/LinkIndex.h"
#include "nodes/values/Uuid.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>

namespace Nodes {

namespace {

// Tokens are never reused, so a link into an unloaded project resolves to null for ever.
struct Registry
{
    std::mutex mutex;
    unsigned long lastToken = 0;
    std::map<unsigned long, NodesCollection *> collections;
    std::vector<std::unique_ptr<ProjectPlace>> places;
    std::atomic<NodesCollection *> current{nullptr};
};

Registry &registry()
{
    static auto *instance = new Registry;
    return *instance;
}

unsigned long enroll(NodesCollection *collection)
{
    Registry &r = registry();
    const std::lock_guard lock(r.mutex);
    r.collections[++r.lastToken] = collection;
    return r.lastToken;
}

ProjectPlace *makePlace(NodesCollection *collection)
{
    auto place = std::make_unique<ProjectPlace>();
    place->project = collection;
    Registry &r = registry();
    const std::lock_guard lock(r.mutex);
    return r.places.emplace_back(std::move(place)).get();
}

} // namespace

NodesCollection::NodesCollection()
    : m_token(enroll(this)), m_place(makePlace(this)), m_uuid(RandomUuid())
{
}

NodesCollection::~NodesCollection()
{
    Registry &r = registry();
    NodesCollection *self = this;
    r.current.compare_exchange_strong(self, nullptr);
    {
        const std::lock_guard lock(r.mutex);
        r.collections.erase(m_token);
    }
    // Nodes look themselves up in the index while they go: empty it first.
    m_index.clear();
    m_clones.clear();
    m_root.reset();
    m_place->project = nullptr;
}

NodesCollection *NodesCollection::Current()
{
    return registry().current.load(std::memory_order_acquire);
}

void NodesCollection::SetCurrent(NodesCollection *collection)
{
    registry().current.store(collection, std::memory_order_release);
}

NodesCollection *NodesCollection::FromToken(unsigned long token)
{
    if (token == 0)
        return nullptr;
    NodesCollection *current = Current();
    if (current && current->m_token == token)
        return current;
    Registry &r = registry();
    const std::lock_guard lock(r.mutex);
    const auto found = r.collections.find(token);
    return found == r.collections.end() ? nullptr : found->second;
}

ConfigNode *NodesCollection::FindNode(unsigned long id) const
{
    const auto found = m_index.find(id);
    return found == m_index.end() ? nullptr : found->second;
}

int NodesCollection::FindNodes(NodeType type, NodeLinks *found) const
{
    if (!m_root)
        return 0;
    const std::size_t before = found->size();
    const bool isFamily = type.GetSubtype() == NodeType::SubtypeNone;
    const auto take = [&](const NodeLink &link) {
        const NodeType own = link.GetNodeType();
        if (isFamily ? own.GetFamily() == type.GetFamily() : own == type)
            found->push_back(link);
    };
    take(m_root.get());
    for (const NodeLink &link : m_root->GetNodes(true))
        take(link);
    return static_cast<int>(found->size() - before);
}

std::vector<ConfigNode *> NodesCollection::GetNodesByPath(const std::string &path) const
{
    std::vector<ConfigNode *> level;
    if (m_root)
        level.push_back(m_root.get());
    std::string_view rest = path;
    while (!rest.empty()) {
        const std::size_t slash = rest.find('/');
        const std::string_view name = rest.substr(0, slash);
        std::vector<ConfigNode *> next;
        for (const ConfigNode *node : level) {
            for (const auto &child : node->Children()) {
                if (child->GetName() == name)
                    next.push_back(child.get());
            }
        }
        level = std::move(next);
        rest.remove_prefix(slash == std::string_view::npos ? rest.size() : slash + 1);
    }
    return level;
}

void NodesCollection::setUp(ConfigNode &node, const KindInfo &kind, unsigned long id)
{
    node.m_kind = &kind;
    node.m_place = m_place;
    node.m_id = id != 0 ? id : NewId();
    ReserveIds(node.m_id);
}

bool NodesCollection::IsInTree(const BasicNode &node) const
{
    const BasicNode *top = &node;
    while (top->m_parent)
        top = top->m_parent;
    return top == m_root.get();
}

std::unique_ptr<ConfigNode> NodesCollection::CreateDetached(const KindInfo &kind, unsigned long id)
{
    std::unique_ptr<ConfigNode> node = kind.create();
    setUp(*node, kind, id);
    node->m_name = kind.nameRu;
    return node;
}

ConfigNode *NodesCollection::CreateNode(NodeType type, ConfigNode *parent)
{
    const KindInfo *kind = KindTable::Instance().Find(type);
    if (!kind)
        return nullptr;
    std::unique_ptr<ConfigNode> node = CreateDetached(*kind);
    ConfigNode *raw = node.get();
    if (!parent) {
        m_index[raw->m_id] = raw;
        m_clones[raw->m_id] = std::move(node);
        return raw;
    }
    raw->m_name = parent->freeName(kind->nameRu, 1);
    return parent->AddNode(node) ? raw : nullptr;
}

std::unique_ptr<ConfigNode> NodesCollection::TakeClone(const NodeLink &clone)
{
    const auto found = m_clones.find(clone.GetNodeId());
    if (found == m_clones.end())
        return nullptr;
    std::unique_ptr<ConfigNode> node = std::move(found->second);
    m_clones.erase(found);
    return node;
}

Result NodesCollection::SetRoot(std::unique_ptr<ConfigNode> root)
{
    m_index.clear();
    m_links.reset();
    ++m_revision;
    const Result remembered = remember(*root);
    if (!remembered) {
        m_index.clear();
        return remembered;
    }
    m_root = std::move(root);
    return Result();
}

Result NodesCollection::remember(ConfigNode &subtree)
{
    const auto [place, isNew] = m_index.emplace(subtree.m_id, &subtree);
    if (!isNew && place->second != &subtree)
        return Result(&subtree, Result::Duplicate, "id " + std::to_string(subtree.m_id));
    ReserveIds(subtree.m_id);
    for (const auto &child : subtree.Children()) {
        const Result remembered = remember(*child);
        if (!remembered)
            return remembered;
    }
    return Result();
}

void NodesCollection::forgetOne(ConfigNode &node)
{
    const auto found = m_index.find(node.m_id);
    if (found == m_index.end() || found->second != &node)
        return;
    m_index.erase(found);
    if (m_originals.erase(node.m_id) != 0)
        ++m_instanceRevision;
}

void NodesCollection::forget(ConfigNode &subtree)
{
    forgetOne(subtree);
    for (const auto &child : subtree.Children())
        forget(*child);
}

} // namespace Nodes
