#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

#include <memory>
#include <vector>

namespace Nodes {

class HistoryTap;

/// Keeps the history of many signals at once: of all below some folders, drivers or groups of
/// signals, but for those that have an archiverSource or a nearer group of their own.
class NODES_EXPORT archiverGroup : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1A002);
    struct Prop
    {
        static constexpr PropertyId<NodeLinks> Scope{26111, "scope"};
        static constexpr PropertyId<int> Samples{26112, "samples"};
        static constexpr PropertyId<int> Days{26113, "days"};
        static constexpr PropertyId<int> Megabytes{26114, "megabytes"};
        static constexpr PropertyId<double> Deadband{26115, "deadband"};
    };

    archiverGroup();
    ~archiverGroup() override;
    static KindInfo Kind();

    /// Folders, drivers, groups of signals, or signals.
    const NodeLinks &GetScope() const { return m_scope; }
    /// Retention of each signal; 0: as the archive's others.
    int GetDays() const { return m_days; }
    int GetMegabytes() const { return m_megabytes; }

    Result Start() override;
    Result Stop() override;
    void Validate(ValidationResults &results) const override;

private:
    NodeLinks m_scope;
    int m_samples = 1000;
    int m_days = 0;
    int m_megabytes = 0;
    double m_deadband = 0;
    std::vector<std::unique_ptr<HistoryTap>> m_taps;
};

} // namespace Nodes
