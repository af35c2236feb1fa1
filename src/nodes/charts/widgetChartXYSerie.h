#pragma once

#include "nodes/charts/widgetChartBasicSerie.h"

namespace Nodes {

/// The signal over a second one: samples that lie close enough in time make a point.
class NODES_EXPORT widgetChartXYSerie : public widgetChartBasicSerie
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xC004);
    struct Prop : widgetChartBasicSerie::Prop
    {
        static constexpr PropertyId<NodeLink> SignalX{12371, "signalX"};
        static constexpr PropertyId<NodeLink> SourceX{12372, "sourceX"};
        static constexpr PropertyId<double> Tolerance{12373, "tolerance"};
        static constexpr PropertyId<NodeLink> AxisX{12374, "axisX"};
    };

    static KindInfo Kind();

    /// Of the series itself, or that of the second archive source; null when there is neither.
    BasicSignal *GetSignalX() const;
    archiverSourceConnector *GetSourceX() const;
    /// Milliseconds between two samples of one point at most.
    double GetTolerance() const { return m_tolerance; }
    /// Null: the first X axis of the group.
    widgetChartAxis *GetAxisX() const;

    NodeLinks GetLinks() const override;
    void CollectArchived(NodeLinks &archived) const override;
    /// As ConnectValues.
    Connection ConnectValuesX(SerieSamples::Slot slot) const;

    void Validate(ValidationResults &results) const override;

private:
    NodeLink m_signalX;
    NodeLink m_sourceX;
    double m_tolerance = 1000;
    NodeLink m_axisX;
};

} // namespace Nodes
