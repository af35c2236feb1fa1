#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/NodesContainer.h"

#include <stdexcept>

/// A project in memory with a root; nodes are named by the keys of their kinds.
struct ProjectFixture
{
    using Properties = std::initializer_list<std::pair<const char *, std::string>>;

    ProjectFixture()
    {
        if (!project.SetRoot(project.CreateDetached(kind("project"))))
            throw std::logic_error("no root");
        Nodes::NodesCollection::SetCurrent(&project);
    }
    static const Nodes::KindInfo &kind(const char *key)
    {
        const Nodes::KindInfo *found = Nodes::KindTable::Instance().FindByKey(key);
        return found ? *found : throw std::logic_error(key);
    }
    Nodes::ConfigNode *root() const { return project.GetRoot(); }
    template <class Node = Nodes::ConfigNode>
    Node *add(const char *key, Nodes::ConfigNode *parent, const char *name = nullptr,
              const Properties &properties = {})
    {
        auto *node = dynamic_cast<Node *>(project.CreateNode(kind(key).type, parent));
        if (!node)
            throw std::logic_error(key);
        if (name)
            node->SetName(name);
        set(node, properties);
        return node;
    }
    /// A layer in a composition: what widgets stand on.
    Nodes::ConfigNode *addLayer() { return add("layer", add("composition", root())); }
    /// Puts a clone, or a node read, into the tree.
    void insert(const Nodes::NodeLink &clone, Nodes::ConfigNode *parent)
    {
        std::unique_ptr<Nodes::ConfigNode> taken = project.TakeClone(clone);
        if (!taken || !parent->AddNode(taken))
            throw std::logic_error("not inserted");
    }
    static void set(Nodes::ConfigNode *node, const Properties &properties)
    {
        for (const auto &[key, text] : properties) {
            const Nodes::Result result = node->SetPropertyText(key, text);
            if (!result)
                throw std::logic_error(key + (": " + result.ToString()));
        }
    }

    std::unique_ptr<Nodes::NodesCollection> owned = std::make_unique<Nodes::NodesCollection>();
    Nodes::NodesCollection &project = *owned;
};

inline std::string idOf(const Nodes::ConfigNode *node)
{
    return std::to_string(node->GetId());
}

inline std::string textOf(const Nodes::ConfigNode &node, const char *key)
{
    const Nodes::PropertyDescriptor *d = node.GetKind()->FindProperty(std::string_view(key));
    return d ? d->binding.format(*d, node) : throw std::logic_error(key);
}
