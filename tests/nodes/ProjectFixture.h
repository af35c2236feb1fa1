#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/NodesContainer.h"

#include <stdexcept>

/// A project in memory with a root; nodes are named by the keys of their kinds.
struct ProjectFixture
{
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
    Nodes::ConfigNode *add(const char *key, Nodes::ConfigNode *parent, const char *name = nullptr)
    {
        Nodes::ConfigNode *node = project.CreateNode(kind(key).type, parent);
        if (!node)
            throw std::logic_error(key);
        if (name)
            node->SetName(name);
        return node;
    }
    /// A layer in a composition: what widgets stand on.
    Nodes::ConfigNode *addLayer() { return add("layer", add("composition", root())); }

    Nodes::NodesCollection project;
};

inline std::string textOf(const Nodes::ConfigNode &node, const char *key)
{
    const Nodes::PropertyDescriptor *d = node.GetKind()->FindProperty(std::string_view(key));
    return d ? d->binding.format(*d, node) : throw std::logic_error(key);
}
