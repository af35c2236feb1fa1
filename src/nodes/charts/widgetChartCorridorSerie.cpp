#include "nodes/charts/widgetChartCorridorSerie.h"

#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

namespace {

BasicNode *sourceOf(const NodeLink &link)
{
    const auto *source = dynamic_cast<const archiverSourceConnector *>(link.GetNode());
    return source ? source->GetSource() : nullptr;
}

BasicSignal *signalOf(const NodeLink &own, const NodeLink &source)
{
    auto *signal = dynamic_cast<BasicSignal *>(own.GetNode());
    return signal ? signal : dynamic_cast<BasicSignal *>(sourceOf(source));
}

} // namespace

KindInfo widgetChartCorridorSerie::Kind()
{
    using Serie = widgetChartCorridorSerie;
    return KindBuilder::For<Serie>("chartCorridorSerie", "Corridor series", "Ряд-коридор")
        .Inherit<widgetChartBasicSerie>()
        .Property<&Serie::m_signalMin>(Prop::SignalMin, "Minimum signal", "Сигнал минимума")
        .Refers({NodeType::TypeSignal})
        .Property<&Serie::m_signalMax>(Prop::SignalMax, "Maximum signal", "Сигнал максимума")
        .Refers({NodeType::TypeSignal})
        .Property<&Serie::m_sourceMin>(Prop::SourceMin, "Minimum archive source",
                                       "Источник архива минимума")
        .Refers({NodeType::TypeArchive})
        .Property<&Serie::m_sourceMax>(Prop::SourceMax, "Maximum archive source",
                                       "Источник архива максимума")
        .Refers({NodeType::TypeArchive})
        .Property<&Serie::m_slice>(Prop::Slice, "Slice, s", "Срез, с")
        .Range(1, 1e9)
        .Property<&Serie::m_fillColor>(Prop::FillColor, "Fill colour", "Цвет заливки");
}

BasicSignal *widgetChartCorridorSerie::GetSignalMin() const
{
    return signalOf(m_signalMin, m_sourceMin);
}

BasicSignal *widgetChartCorridorSerie::GetSignalMax() const
{
    return signalOf(m_signalMax, m_sourceMax);
}

NodeLinks widgetChartCorridorSerie::GetLinks() const
{
    NodeLinks links = widgetChartBasicSerie::GetLinks();
    links.insert(links.end(), {m_signalMin, m_signalMax, m_sourceMin, m_sourceMax});
    return links;
}

void widgetChartCorridorSerie::CollectArchived(NodeLinks &archived) const
{
    widgetChartBasicSerie::CollectArchived(archived);
    for (const NodeLink &source : {m_sourceMin, m_sourceMax}) {
        if (const BasicNode *signal = sourceOf(source))
            archived.push_back(signal->GetNodeLink());
    }
}

Connection widgetChartCorridorSerie::ConnectValuesMin(SerieSamples::Slot slot) const
{
    return ConnectSignal(GetSignalMin(), std::move(slot));
}

Connection widgetChartCorridorSerie::ConnectValuesMax(SerieSamples::Slot slot) const
{
    return ConnectSignal(GetSignalMax(), std::move(slot));
}

void widgetChartCorridorSerie::Validate(ValidationResults &results) const
{
    widgetChartBasicSerie::Validate(results);
    if (bool(GetSignalMin()) != bool(GetSignalMax()))
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "signalMin, signalMax"),
                    "Ряд «" + GetPath() + "»: нужны либо оба сигнала границ, либо ни одного.");
}

} // namespace Nodes
