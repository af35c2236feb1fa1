#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/windows/BasicWindow.h"

namespace Nodes {

class BasicComposition;

/// A window whose content is one of several compositions, switchable at run time.
class NODES_EXPORT windowComposed : public BasicWindow
{
public:
    static constexpr auto Code = NodeType::SubtypeWindowComposed;
    struct Prop : BasicWindow::Prop
    {
        static constexpr PropertyId<NodeLink> Composition{18020, "composition"};
    };

    static KindInfo Kind();

    /// Composition shown first, as configured; null when none is set or it is gone.
    BasicComposition *GetComposition() const;
    /// For windows that are made for a composition: before they are shown.
    void SetComposition(const BasicComposition *composition);
    /// Composition shown now: the one loaded last, else the configured one.
    BasicComposition *GetCurrentComposition() const;
    /// Records the composition as the one shown now; run-time state, never saved.
    void LoadComposition(BasicComposition *composition);

private:
    NodeLink m_composition;
    NodeLink m_current;
};

} // namespace Nodes
