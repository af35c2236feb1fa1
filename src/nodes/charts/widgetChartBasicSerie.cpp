#include "nodes/charts/widgetChartBasicSerie.h"

#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/charts/widgetChartAxis.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"

#include <algorithm>

namespace Nodes {

void widgetChartBasicSerie::Describe(KindBuilder &builder)
{
    using Serie = widgetChartBasicSerie;
    builder.Property<&Serie::m_signal>(Prop::Signal, "Signal", "Сигнал")
        .Refers({NodeType::TypeSignal})
        .Property<&Serie::m_source>(Prop::Source, "Archive source", "Источник архива")
        .Refers({NodeType::TypeArchive})
        .Property<&Serie::m_text>(Prop::Text, "Text", "Текст")
        .Property<&Serie::m_color>(Prop::Color, "Colour", "Цвет")
        .Property<&Serie::m_thickness>(Prop::Thickness, "Thickness", "Толщина линии")
        .Range(1, 32)
        .Property<&Serie::m_style>(Prop::Style, "Style", "Вид линии")
        .Choice(Lines, "lines", "Линии")
        .Choice(Sticks, "sticks", "Отрезки")
        .Choice(Steps, "steps", "Ступени")
        .Choice(Dots, "dots", "Точки")
        .Property<&Serie::m_axisY>(Prop::AxisY, "Y axis", "Ось Y")
        .Refers({NodeType::TypeChartAxis})
        .Property<&Serie::m_plotArea>(Prop::PlotArea, "Plot area", "Область графика")
        .Range(1, 1000)
        .Property<&Serie::m_offsetY>(Prop::OffsetY, "Y offset", "Смещение по Y")
        .Property<&Serie::m_isLive>(Prop::Live, "Live values", "Текущие значения")
        .Property<&Serie::m_isVisible>(Prop::Visible, "Visible", "Видимый");
}

archiverSourceConnector *widgetChartBasicSerie::GetSource() const
{
    return dynamic_cast<archiverSourceConnector *>(m_source.GetNode());
}

BasicSignal *widgetChartBasicSerie::GetSignal() const
{
    if (auto *signal = dynamic_cast<BasicSignal *>(m_signal.GetNode()))
        return signal;
    const archiverSourceConnector *source = GetSource();
    return source ? dynamic_cast<BasicSignal *>(source->GetSource()) : nullptr;
}

NodeLinks widgetChartBasicSerie::GetLinks() const
{
    return {m_signal, m_source};
}

std::vector<BasicSignal *> widgetChartBasicSerie::GetSignals() const
{
    std::vector<BasicSignal *> found;
    for (const NodeLink &link : GetLinks()) {
        const auto *source = dynamic_cast<const archiverSourceConnector *>(link.GetNode());
        auto *signal = dynamic_cast<BasicSignal *>(source ? source->GetSource() : link.GetNode());
        if (signal && std::find(found.begin(), found.end(), signal) == found.end())
            found.push_back(signal);
    }
    return found;
}

void widgetChartBasicSerie::CollectArchived(NodeLinks &archived) const
{
    const archiverSourceConnector *source = GetSource();
    if (const BasicNode *signal = source ? source->GetSource() : nullptr)
        archived.push_back(signal->GetNodeLink());
}

std::string widgetChartBasicSerie::GetText() const
{
    if (!m_text.empty())
        return m_text;
    const BasicSignal *signal = GetSignal();
    return signal ? signal->GetName() : GetName();
}

widgetChartAxis *widgetChartBasicSerie::GetAxisY() const
{
    return dynamic_cast<widgetChartAxis *>(m_axisY.GetNode());
}

std::string widgetChartBasicSerie::GetUnit() const
{
    const BasicSignal *signal = GetSignal();
    return signal ? signal->GetUnit() : std::string();
}

int widgetChartBasicSerie::GetDecimals() const
{
    const BasicSignal *signal = GetSignal();
    return signal ? signal->GetDecimals() : 1;
}

bool widgetChartBasicSerie::IsForbidden() const
{
    const std::vector<BasicSignal *> shown = GetSignals();
    return std::any_of(shown.begin(), shown.end(),
                       [](const BasicSignal *signal) { return IsForbiddenToView(*signal); });
}

Connection widgetChartBasicSerie::ConnectSignal(const BasicSignal *signal, SerieSamples::Slot slot)
{
    if (!signal || IsForbiddenToView(*signal))
        return Connection();
    return SerieSamples::Connect(signal->GetCell(), std::move(slot));
}

Connection widgetChartBasicSerie::ConnectValues(SerieSamples::Slot slot) const
{
    return ConnectSignal(GetSignal(), std::move(slot));
}

void widgetChartBasicSerie::ValidateSignal(ValidationResults &results, const NodeLink &link,
                                           const char *what) const
{
    const auto *signal = dynamic_cast<const BasicSignal *>(link.GetNode());
    if (!signal)
        results.Add(GetNodeLink(), Result(this, Result::NotFound, what),
                    "Ряд «" + GetPath() + "»: не указан сигнал (" + what + ").");
    else if (signal->GetValueType() == enSignalValueType::String)
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, what),
                    "Ряд «" + GetPath() + "»: «" + signal->GetName() +
                        "» — текст, а график рисует числа.");
}

void widgetChartBasicSerie::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    const BasicSignal *signal = GetSignal();
    ValidateSignal(results, signal ? signal->GetNodeLink() : NodeLink(), "signal");
    const archiverSourceConnector *source = GetSource();
    if (signal && source && source->GetSource() != signal)
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "source"),
                    "Ряд «" + GetPath() + "»: источник архива хранит другой сигнал.");
    const widgetChartAxis *axis = GetAxisY();
    if (axis && (axis->GetParent() != GetParent() || axis->IsX()))
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "axisY"),
                    "Ряд «" + GetPath() + "»: нужна ось Y той же группы.");
}

} // namespace Nodes
