#include "nodes/visual/elements/widgetBargraph.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/signals/ValueText.h"
#include "nodes/values/NumberText.h"
#include "nodes/values/ValueCell.h"

#include <algorithm>
#include <cmath>

namespace Nodes {

namespace {

constexpr double narrowest = 1e-12; // of the ends: below it a double cannot tell ticks apart

} // namespace

widgetBargraph::widgetBargraph() : BasicTextWidget(NColor(0, 0, 0, 0), 0, AlignmentHCenter) {}

KindInfo widgetBargraph::Kind()
{
    return KindBuilder::For<widgetBargraph>("bargraph", "Bargraph", "Столбиковый индикатор")
        .Inherit<BasicTextWidget>()
        .Property<&widgetBargraph::m_orientation>(Prop::Orientation, "Orientation", "Ориентация")
        .Choice(Vertical, "vertical", "Вертикально")
        .Choice(Horizontal, "horizontal", "Горизонтально")
        .Property<&widgetBargraph::m_minimum>(Prop::Minimum, "Minimum", "Начало шкалы")
        .Property<&widgetBargraph::m_maximum>(Prop::Maximum, "Maximum", "Конец шкалы")
        .Property<&widgetBargraph::m_showsScale>(Prop::Scale, "Show scale", "Показывать шкалу")
        .Property<&widgetBargraph::m_showsValue>(Prop::Value, "Show value", "Показывать значение")
        .Property<&widgetBargraph::m_barColor>(Prop::BarColor, "Bar colour", "Цвет столбика")
        .Property<&widgetBargraph::m_zoneSource>(Prop::Zones, "Zones", "Зоны")
        .Choice(ZonesOfAlarms, "alarms", "По тревогам сигнала")
        .Choice(ZonesOwn, "own", "Свои")
        .Choice(ZonesNone, "none", "Нет")
        .Property<&widgetBargraph::m_setPoint>(Prop::SetPoint, "Set-point", "Уставка")
        .Refers({NodeType::TypeSignal})
        .Property<&widgetBargraph::m_lowLow>(Prop::LowLow, "LL", "Нижний аварийный")
        .Property<&widgetBargraph::m_low>(Prop::Low, "L", "Нижний предупредительный")
        .Property<&widgetBargraph::m_high>(Prop::High, "H", "Верхний предупредительный")
        .Property<&widgetBargraph::m_highHigh>(Prop::HighHigh, "HH", "Верхний аварийный");
}

double widgetBargraph::signalEnd(bool isLower) const
{
    const BasicSignal *signal = GetSignal();
    if (!signal)
        return 0;
    return isLower ? signal->GetMinimum() : signal->GetMaximum();
}

LimitZones widgetBargraph::GetZones() const
{
    const BasicSignal *signal = GetSignal();
    if (m_zoneSource == ZonesOwn)
        return {m_lowLow, m_low, m_high, m_highHigh};
    return m_zoneSource == ZonesOfAlarms && signal ? LimitZones::FromAlarms(*signal) : LimitZones();
}

AlarmMark widgetBargraph::GetAlarmMark(const SignalValue &value) const
{
    const BasicSignal *signal = GetSignal();
    if (m_zoneSource == ZonesOfAlarms && signal)
        return AlarmMark::Of(*signal, value);
    return m_zoneSource == ZonesOwn && value.GetQuality() != Quality::Bad
               ? AlarmMark::OfZone(GetZones().GetZone(value.ToDouble()))
               : AlarmMark();
}

std::optional<SignalValue> widgetBargraph::GetSetPoint() const
{
    const auto *signal = dynamic_cast<const BasicSignal *>(m_setPoint.GetNode());
    return signal ? std::optional(signal->GetShownValue()) : std::nullopt;
}

std::string widgetBargraph::GetUnit() const
{
    const BasicSignal *signal = GetSignal();
    return signal ? signal->GetUnit() : std::string();
}

std::string widgetBargraph::GetDisplayText(const SignalValue &value) const
{
    const double number = value.ToDouble();
    if (value.GetQuality() == Quality::Bad || std::isnan(number))
        return NoValueText;
    const ValueText text(GetSignal());
    return text.WithUnit(text.OfNumber(number));
}

void widgetBargraph::followSetPoint()
{
    const auto *signal = dynamic_cast<const BasicSignal *>(m_setPoint.GetNode());
    if (!signal) {
        m_setPointValues.Disconnect();
        return;
    }
    const BasicSignal *shown = GetSignal();
    const std::shared_ptr<ValueCell> cell = shown ? shown->GetCell() : nullptr;
    m_setPointValues.Connect(signal->GetCell(), [this, cell](const SignalValue &) {
        NotifyShown(cell ? cell->Value() : SignalValue());
    });
}

Result widgetBargraph::OnFirstStart()
{
    const Result started = BasicTextWidget::OnFirstStart();
    followSetPoint();
    return started;
}

Result widgetBargraph::OnLastStop()
{
    m_setPointValues.Disconnect();
    return BasicTextWidget::OnLastStop();
}

void widgetBargraph::OnPropertyChanged(const PropertyDescriptor &descriptor)
{
    BasicTextWidget::OnPropertyChanged(descriptor);
    const bool isOther = descriptor.valueId == Prop::SetPoint || descriptor.valueId == Prop::Signal;
    if (isOther && GetState() == NodeState::Running)
        followSetPoint();
}

void widgetBargraph::Validate(ValidationResults &results) const
{
    BasicTextWidget::Validate(results);
    if (!(GetMinimum() < GetMaximum()))
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "minimum, maximum"),
                    "Индикатор «" + GetPath() +
                        "»: начало шкалы не меньше конца. Задайте шкалу индикатора или пределы "
                        "сигнала.");
    else if (GetMaximum() - GetMinimum() <
             narrowest * std::max(std::abs(GetMinimum()), std::abs(GetMaximum())))
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "minimum, maximum"),
                    "Индикатор «" + GetPath() +
                        "»: шкала слишком узка для таких больших чисел, делений на ней не будет. "
                        "Раздвиньте её пределы.");
}

} // namespace Nodes
