#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

class BasicSignal;

/// A signal whose archive a report shows. Its name, GetName(), is that of the data source in the
/// report's template.
class NODES_EXPORT ReportSignalInfo : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xD002);
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Signal{13101, "signal"};
    };

    static KindInfo Kind();

    /// Null when no signal is set or it is gone.
    BasicSignal *GetSignal() const;
    const NodeLink &GetSignalLink() const { return m_signal; }

private:
    NodeLink m_signal;
};

} // namespace Nodes
