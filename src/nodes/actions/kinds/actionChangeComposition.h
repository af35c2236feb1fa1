#pragma once

#include "nodes/actions/BasicWindowAction.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

class BasicComposition;

/// Loads a composition into the composed windows it names.
class NODES_EXPORT actionChangeComposition : public BasicWindowAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10002);
    struct Prop : BasicWindowAction::Prop
    {
        static constexpr PropertyId<NodeLink> Composition{16012, "composition"};
    };

    static KindInfo Kind();
    /// Null when no composition is set or it is gone.
    BasicComposition *GetComposition() const;

private:
    NodeLink m_composition;
};

} // namespace Nodes
