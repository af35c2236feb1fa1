#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Opens a trend of signals: of those given or, without any, of the signal of the element that was
/// pressed. Whoever may not view a signal sees neither its values nor its history there.
class NODES_EXPORT actionShowTrend : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10013);
    struct Prop
    {
        static constexpr PropertyId<NodeLinks> Signals{16301, "signals"};
    };

    static KindInfo Kind();

    const NodeLinks &GetSignals() const { return m_signals; }

private:
    NodeLinks m_signals;
};

} // namespace Nodes
