#pragma once

#include "nodes/charts/widgetChartBasicSerie.h"

namespace Nodes {

/// A tube about a signal: between two other signals or, without those, between the extremes of
/// what the signal did within each stretch of time.
class NODES_EXPORT widgetChartCorridorSerie : public widgetChartBasicSerie
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xC005);
    struct Prop : widgetChartBasicSerie::Prop
    {
        static constexpr PropertyId<NodeLink> SignalMin{12381, "signalMin"};
        static constexpr PropertyId<NodeLink> SignalMax{12382, "signalMax"};
        static constexpr PropertyId<NodeLink> SourceMin{12383, "sourceMin"};
        static constexpr PropertyId<NodeLink> SourceMax{12384, "sourceMax"};
        static constexpr PropertyId<double> Slice{12385, "slice"};
        static constexpr PropertyId<NColor> FillColor{12386, "fillColor"};
    };

    static KindInfo Kind();

    BasicSignal *GetSignalMin() const;
    BasicSignal *GetSignalMax() const;
    /// Milliseconds of a stretch when there is one signal only.
    double GetSlice() const { return m_slice * 1000; }
    NColor GetFillColor() const { return m_fillColor; }

    NodeLinks GetLinks() const override;
    void CollectArchived(NodeLinks &archived) const override;
    /// As ConnectValues.
    Connection ConnectValuesMin(SerieSamples::Slot slot) const;
    Connection ConnectValuesMax(SerieSamples::Slot slot) const;

    void Validate(ValidationResults &results) const override;

private:
    NodeLink m_signalMin;
    NodeLink m_signalMax;
    NodeLink m_sourceMin;
    NodeLink m_sourceMax;
    double m_slice = 60; // seconds
    NColor m_fillColor{60, 96, 140, 70};
};

} // namespace Nodes
