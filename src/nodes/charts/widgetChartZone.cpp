#include "nodes/charts/widgetChartZone.h"

#include "nodes/charts/widgetChartAxis.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

KindInfo widgetChartZone::Kind()
{
    using Zone = widgetChartZone;
    return KindBuilder::For<Zone>("chartZone", "Zone", "Зона")
        .Property<&Zone::m_lower>(Prop::Lower, "Lower limit", "Нижняя граница")
        .Property<&Zone::m_upper>(Prop::Upper, "Upper limit", "Верхняя граница")
        .Property<&Zone::m_lowerSignal>(Prop::LowerSignal, "Signal of the lower limit",
                                        "Сигнал нижней границы")
        .Refers({NodeType::TypeSignal})
        .Property<&Zone::m_upperSignal>(Prop::UpperSignal, "Signal of the upper limit",
                                        "Сигнал верхней границы")
        .Refers({NodeType::TypeSignal})
        .Property<&Zone::m_color>(Prop::Color, "Colour", "Цвет")
        .Property<&Zone::m_text>(Prop::Text, "Text", "Текст")
        .Property<&Zone::m_isEditable>(Prop::Editable, "Editable", "Изменяемая")
        .Property<&Zone::m_axis>(Prop::Axis, "Axis", "Ось")
        .Refers({NodeType::TypeChartAxis});
}

BasicSignal *widgetChartZone::GetLowerSignal() const
{
    return dynamic_cast<BasicSignal *>(m_lowerSignal.GetNode());
}

BasicSignal *widgetChartZone::GetUpperSignal() const
{
    return dynamic_cast<BasicSignal *>(m_upperSignal.GetNode());
}

widgetChartAxis *widgetChartZone::GetAxis() const
{
    return dynamic_cast<widgetChartAxis *>(m_axis.GetNode());
}

void widgetChartZone::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    const widgetChartAxis *axis = GetAxis();
    if (axis && (axis->GetParent() != GetParent() || axis->IsX()))
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "axis"),
                    "Зона «" + GetPath() + "»: нужна ось Y той же группы.");
    if (!GetLowerSignal() && !GetUpperSignal() && !(m_lower < m_upper))
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "lower, upper"),
                    "Зона «" + GetPath() + "»: нижняя граница не меньше верхней.");
}

} // namespace Nodes
