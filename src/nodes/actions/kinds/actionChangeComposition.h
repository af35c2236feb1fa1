#pragma once

#include "nodes/actions/BasicWindowAction.h"

namespace Nodes {

class BasicComposition;

/// Loads a composition into the composed windows it names.
class NODES_EXPORT actionChangeComposition : public BasicWindowAction
{
public:
    static KindInfo Kind();
    /// Null when no composition is set or it is gone.
    BasicComposition *GetComposition() const;

private:
    NodeLink m_composition;
};

} // namespace Nodes
