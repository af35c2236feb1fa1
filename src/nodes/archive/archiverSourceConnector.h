#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

#include <memory>

namespace Nodes {

class BasicSignal;
class HistoryTap;

/// Connects a signal with the history: while the station runs, its samples go into the archive, or,
/// in a station without one, the latest are kept in memory; and requests for them are answered.
class NODES_EXPORT archiverSourceConnector : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1A001);
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Signal{26101, "signal"};
        static constexpr PropertyId<int> Samples{26102, "samples"};
        static constexpr PropertyId<int> Days{26103, "days"};
        static constexpr PropertyId<int> Megabytes{26104, "megabytes"};
        static constexpr PropertyId<double> Deadband{26105, "deadband"};
    };

    archiverSourceConnector();
    ~archiverSourceConnector() override;
    static KindInfo Kind();

    /// The signal whose history it is; null when none is set or it is gone. Answers carry its id.
    BasicNode *GetSource() const;

    /// Retention of the signal; 0: as the archive's others.
    int GetDays() const { return m_days; }
    int GetMegabytes() const { return m_megabytes; }

    /// NotFound without a signal, Duplicate when another one keeps its history already.
    Result Start() override;
    Result Stop() override;
    void Validate(ValidationResults &results) const override;

private:
    BasicSignal *signal() const;

    NodeLink m_signal;
    int m_samples = 10000;
    int m_days = 0;
    int m_megabytes = 0;
    double m_deadband = 0;
    std::unique_ptr<HistoryTap> m_tap;
};

} // namespace Nodes
