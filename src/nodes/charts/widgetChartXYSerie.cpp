#include "nodes/charts/widgetChartXYSerie.h"

#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/charts/widgetChartAxis.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

KindInfo widgetChartXYSerie::Kind()
{
    using Serie = widgetChartXYSerie;
    return KindBuilder::For<Serie>("chartXYSerie", "XY series", "Ряд XY")
        .Inherit<widgetChartBasicSerie>()
        .Property<&Serie::m_signalX>(Prop::SignalX, "X signal", "Сигнал X")
        .Refers({NodeType::TypeSignal})
        .Property<&Serie::m_sourceX>(Prop::SourceX, "X archive source", "Источник архива X")
        .Refers({NodeType::TypeArchive})
        .Property<&Serie::m_tolerance>(Prop::Tolerance, "Tolerance, ms", "Допуск, мс")
        .Range(0, 86400000)
        .Property<&Serie::m_axisX>(Prop::AxisX, "X axis", "Ось X")
        .Refers({NodeType::TypeChartAxis});
}

archiverSourceConnector *widgetChartXYSerie::GetSourceX() const
{
    return dynamic_cast<archiverSourceConnector *>(m_sourceX.GetNode());
}

BasicSignal *widgetChartXYSerie::GetSignalX() const
{
    if (auto *signal = dynamic_cast<BasicSignal *>(m_signalX.GetNode()))
        return signal;
    const archiverSourceConnector *source = GetSourceX();
    return source ? dynamic_cast<BasicSignal *>(source->GetSource()) : nullptr;
}

widgetChartAxis *widgetChartXYSerie::GetAxisX() const
{
    return dynamic_cast<widgetChartAxis *>(m_axisX.GetNode());
}

NodeLinks widgetChartXYSerie::GetLinks() const
{
    NodeLinks links = widgetChartBasicSerie::GetLinks();
    links.push_back(m_signalX);
    links.push_back(m_sourceX);
    return links;
}

void widgetChartXYSerie::CollectArchived(NodeLinks &archived) const
{
    widgetChartBasicSerie::CollectArchived(archived);
    const archiverSourceConnector *source = GetSourceX();
    if (const BasicNode *signal = source ? source->GetSource() : nullptr)
        archived.push_back(signal->GetNodeLink());
}

Connection widgetChartXYSerie::ConnectValuesX(SerieSamples::Slot slot) const
{
    return ConnectSignal(GetSignalX(), std::move(slot));
}

void widgetChartXYSerie::Validate(ValidationResults &results) const
{
    widgetChartBasicSerie::Validate(results);
    const BasicSignal *signal = GetSignalX();
    ValidateSignal(results, signal ? signal->GetNodeLink() : NodeLink(), "signalX");
}

} // namespace Nodes
