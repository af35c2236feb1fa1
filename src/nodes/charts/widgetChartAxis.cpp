#include "nodes/charts/widgetChartAxis.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"

#include <cmath>

namespace Nodes {

namespace {

constexpr double longest = 1e9;

void addUnits(KindBuilder &builder)
{
    builder.Choice(widgetChartAxis::RangeSeconds, "seconds", "Секунды")
        .Choice(widgetChartAxis::RangeMinutes, "minutes", "Минуты")
        .Choice(widgetChartAxis::RangeHours, "hours", "Часы")
        .Choice(widgetChartAxis::RangeDays, "days", "Дни");
}

} // namespace

KindInfo widgetChartAxis::Kind()
{
    return KindBuilder::For<widgetChartAxis>("chartAxis", "Value axis", "Ось значений")
        .Inherit<widgetChartAxis>();
}

void widgetChartAxis::Describe(KindBuilder &builder)
{
    using Axis = widgetChartAxis;
    builder.Property<&Axis::m_position>(Prop::Position, "Position", "Сторона")
        .Choice(PositionLeft, "left", "Слева")
        .Choice(PositionRight, "right", "Справа")
        .Choice(PositionBottom, "bottom", "Снизу")
        .Choice(PositionTop, "top", "Сверху")
        .Property<&Axis::m_isVisible>(Prop::Visible, "Visible", "Видимый")
        .Property<&Axis::m_color>(Prop::Color, "Colour", "Цвет")
        .Property<&Axis::m_fontSize>(Prop::FontSize, "Font size", "Размер шрифта")
        .Range(6, 96)
        .Property<&Axis::m_title>(Prop::Title, "Title", "Заголовок")
        .Property<&Axis::m_format>(Prop::Format, "Label format", "Формат подписей")
        .Hint("numberFormat")
        .Property<&Axis::m_minimum>(Prop::Minimum, "From", "Начало шкалы")
        .Property<&Axis::m_maximum>(Prop::Maximum, "To", "Конец шкалы")
        .Property<&Axis::m_isAutoScale>(Prop::AutoScale, "Auto-scale", "Автомасштаб")
        .Property<&Axis::m_isLogarithmic>(Prop::Logarithmic, "Logarithmic", "Логарифмическая")
        .Property<&Axis::m_length>(Prop::Length, "Window length", "Ширина интервала")
        .Range(0, longest)
        .Property<&Axis::m_lengthUnit>(Prop::LengthUnit, "Unit of the length", "Единица интервала");
    addUnits(builder);
    builder.Property<&Axis::m_maxLength>(Prop::MaxLength, "Longest window", "Наибольший интервал")
        .Range(0, longest)
        .Property<&Axis::m_maxLengthUnit>(Prop::MaxLengthUnit, "Unit of the longest window",
                                          "Единица наибольшего интервала");
    addUnits(builder);
}

double widgetChartAxis::Milliseconds(double length, enRangeUnit unit)
{
    switch (unit) {
    case RangeSeconds:
        return length * 1000;
    case RangeMinutes:
        return length * 60 * 1000;
    case RangeHours:
        return length * 3600 * 1000;
    case RangeDays:
        return length * 86400 * 1000;
    }
    return 0;
}

void widgetChartAxis::OnPropertyChanged(const PropertyDescriptor &descriptor)
{
    ConfigNode::OnPropertyChanged(descriptor);
    if (descriptor.valueId == Prop::Length)
        m_shownLength.reset();
    else if (descriptor.valueId == Prop::LengthUnit)
        m_shownUnit.reset();
}

void widgetChartAxis::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    const auto report = [&](const char *what, const std::string &told) {
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, what),
                    "Ось «" + GetPath() + "»: " + told);
    };
    if (!m_isAutoScale && !(m_minimum < m_maximum))
        report("from, to", "начало шкалы не меньше конца.");
    if (m_isLogarithmic && !m_isAutoScale && !(m_minimum > 0))
        report("from", "у логарифмической шкалы начало больше нуля.");
    const double length = Milliseconds(m_length, enRangeUnit(m_lengthUnit));
    if (!(length > 0) || length > Milliseconds(m_maxLength, enRangeUnit(m_maxLengthUnit)))
        report("length", "ширина интервала должна быть больше нуля и не больше наибольшей.");
}

} // namespace Nodes
