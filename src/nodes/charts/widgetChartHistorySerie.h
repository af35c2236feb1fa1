#pragma once

#include "nodes/charts/widgetChartBasicSerie.h"

namespace Nodes {

/// A line over time: live values and history of one signal.
class NODES_EXPORT widgetChartHistorySerie : public widgetChartBasicSerie
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xC002);
    struct Prop : widgetChartBasicSerie::Prop
    {
        static constexpr PropertyId<double> Shift{12361, "shift"};
    };

    static KindInfo Kind();

    /// Milliseconds; above 0 the line shows what the signal was that much earlier.
    double GetShift() const { return m_shift * 1000; }

    /// A line of the past is read by its own requests.
    void CollectArchived(NodeLinks &archived) const override;

private:
    double m_shift = 0; // seconds
};

} // namespace Nodes
