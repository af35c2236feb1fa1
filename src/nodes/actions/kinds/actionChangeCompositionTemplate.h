#pragma once

#include "nodes/actions/BasicTemplateAction.h"
#include "nodes/actions/kinds/actionChangeComposition.h"

namespace Nodes {

class compositionTemplate;
class windowComposed;

/// Opens an instance of a template composition in a window of its own, made like the composed
/// window named, or brings forward one with the same arguments.
class NODES_EXPORT actionChangeCompositionTemplate : public BasicTemplateAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1000d);
    struct Prop : BasicTemplateAction::Prop
    {
        static constexpr auto Composition = actionChangeComposition::Prop::Composition;
    };

    static KindInfo Kind();
    /// Null when the window is none or not composed.
    windowComposed *GetComposedWindow() const;
    /// Null when the composition is none or no template.
    compositionTemplate *GetCompositionTemplate() const;
    ConfigNode *GetTemplate() const override;

private:
    NodeLink m_composition;
};

} // namespace Nodes
