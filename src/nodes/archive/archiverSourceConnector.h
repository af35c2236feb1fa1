#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

#include <memory>

namespace Nodes {

class BasicSignal;
class SessionHistory;
class ValueCell;

/// Connects a signal with the history: while the station runs, its latest samples are kept in
/// memory and requests for them are answered.
class NODES_EXPORT archiverSourceConnector : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1A001);
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Signal{26101, "signal"};
        static constexpr PropertyId<int> Samples{26102, "samples"};
    };

    archiverSourceConnector();
    ~archiverSourceConnector() override;
    static KindInfo Kind();

    /// The signal whose history it is; null when none is set or it is gone. Answers carry its id.
    BasicNode *GetSource() const;

    /// NotFound without a signal, Duplicate when another one keeps its history already.
    Result Start() override;
    Result Stop() override;
    void Validate(ValidationResults &results) const override;

private:
    BasicSignal *signal() const;
    void disconnect();

    NodeLink m_signal;
    int m_samples = 10000;
    std::shared_ptr<ValueCell> m_cell;         // null while not connected
    std::shared_ptr<SessionHistory> m_history; // likewise
};

} // namespace Nodes
