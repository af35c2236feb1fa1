#pragma once

#include "nodes/actions/BasicOpeningAction.h"

namespace Nodes {

/// An action that opens an instance of a template; its children are the arguments.
class NODES_EXPORT BasicTemplateAction : public BasicOpeningAction
{
public:
    std::vector<ConfigNode *> GetArguments() const { return GetObjects(NodeType::TypeArgument); }
    /// The template whose parameters the arguments are for; null when none is set or it is gone.
    virtual ConfigNode *GetTemplate() const = 0;

    /// Reports parameters and arguments that do not fit together.
    void Validate(ValidationResults &results) const override;

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;
};

} // namespace Nodes
