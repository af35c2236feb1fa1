#pragma once

#include "nodes/model/ConfigNode.h"

namespace Nodes {

/// What makes instances of a template: a node whose `templateArgument` children say what each
/// parameter stands for.
class NODES_EXPORT TemplateUse
{
public:
    /// A template of windows or of compositions.
    static bool IsTemplate(const ConfigNode &node);
    static std::vector<ConfigNode *> ArgumentsOf(const ConfigNode &user);
    /// The template that the node is, or is part of; null outside of one.
    static const ConfigNode *Around(const ConfigNode &node);
    /// Templates that the node's elements show, and those that these show in turn; each once, in
    /// the order they are found.
    static NodeLinks ShownBy(const ConfigNode &node);
    /// Whether an instance of that template would show the node: as itself, by its elements, or by
    /// what they show in turn.
    static bool Shows(const ConfigNode &source, const ConfigNode &node);
    /// Reports parameters and arguments of `user` that do not fit together.
    static void Validate(const ConfigNode &user, const ConfigNode &source,
                         ValidationResults &results);
};

} // namespace Nodes
