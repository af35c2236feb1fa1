#include "nodes/visual/elements/widgetSymbol.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/signals/ValueText.h"
#include "nodes/templates/widgetInstance.h"
#include "nodes/visual/elements/widgetState.h"
#include "nodes/visual/windows/BasicWindow.h"

#include <algorithm>

namespace Nodes {

widgetSymbol::widgetSymbol() : BasicTextWidget(NColor(0, 0, 0, 0), 0, AlignmentHCenter)
{
    SetVerticalAlignment(AlignmentBottom);
}

KindInfo widgetSymbol::Kind()
{
    return KindBuilder::For<widgetSymbol>("symbol", "Symbol", "Мнемосимвол")
        .Inherit<BasicTextWidget>()
        .Property<&widgetSymbol::m_source>(Prop::Source, "Symbol", "Мнемосимвол")
        .Property<&widgetSymbol::m_body>(Prop::Body, "Surface", "Цвет поверхности")
        .Property<&widgetSymbol::m_line>(Prop::Line, "Outline", "Цвет контура")
        .Property<&widgetSymbol::m_minimum>(Prop::Minimum, "Empty at", "Пусто при")
        .Property<&widgetSymbol::m_maximum>(Prop::Maximum, "Full at", "Полно при")
        .Property<&widgetSymbol::m_levelColor>(Prop::LevelColor, "Level colour", "Цвет уровня")
        .Property<&widgetSymbol::m_angle>(Prop::Angle, "Angle, degrees", "Угол поворота, °")
        .Range(-360, 360)
        .Hint("angle")
        .Property<&widgetSymbol::m_isMirrored>(Prop::Mirrored, "Mirrored", "Зеркально")
        .Property<&widgetSymbol::m_keepsAspect>(Prop::KeepAspect, "Keep proportions",
                                                "Сохранять пропорции")
        .Property<&widgetSymbol::m_showsValue>(Prop::ShowValue, "Show value", "Показывать значение")
        .Children({NodeType::TypeState});
}

bool widgetSymbol::hasStates() const
{
    return std::any_of(Children().begin(), Children().end(), [](const auto &child) {
        return dynamic_cast<const widgetState *>(child.get()) != nullptr;
    });
}

const widgetState *widgetSymbol::GetState(const SignalValue &value) const
{
    return GetSignalLink().isEmpty() ? nullptr : widgetState::Find(*this, value);
}

const ResourceLink &widgetSymbol::GetSource(const SignalValue &value) const
{
    const widgetState *state = GetState(value);
    return state && !state->GetImage().GetFilePath().empty() ? state->GetImage() : m_source;
}

NColor widgetSymbol::GetSurface() const
{
    if (GetBackgroundColor().alpha > 127)
        return GetBackgroundColor();
    for (const ConfigNode *above = GetParent(); above; above = above->GetParent()) {
        const auto *window = dynamic_cast<const BasicWindow *>(above);
        if (window && !dynamic_cast<const widgetInstance *>(above->GetParent()))
            return window->GetBackgroundColor();
    }
    return BasicWindow().GetBackgroundColor();
}

SymbolLook widgetSymbol::GetLook(const SignalValue &value) const
{
    if (GetSignalLink().isEmpty())
        return SymbolLook::Plain;
    if (value.GetQuality() == Quality::Bad)
        return SymbolLook::Unknown;
    if (const widgetState *state = GetState(value))
        return state->GetLook();
    if (hasStates())
        return SymbolLook::Unknown;
    if (value.GetType() != enSignalValueType::Bool)
        return SymbolLook::Plain;
    return value.ToBool() ? SymbolLook::On : SymbolLook::Off;
}

double widgetSymbol::GetLevel(const SignalValue &value) const
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const BasicSignal *signal = GetSignal();
    if (!signal || value.GetQuality() == Quality::Bad)
        return none;
    const bool isOwn = m_minimum < m_maximum;
    const double empty = isOwn ? m_minimum : signal->GetMinimum();
    const double full = isOwn ? m_maximum : signal->GetMaximum();
    if (!(empty < full))
        return none;
    return std::clamp((value.ToDouble() - empty) / (full - empty), 0.0, 1.0);
}

std::string widgetSymbol::GetDisplayText(const SignalValue &value) const
{
    const widgetState *state = GetState(value);
    if (state && !state->GetText().empty())
        return state->GetText();
    if (!m_showsValue || GetSignalLink().isEmpty())
        return {};
    const ValueText text(GetSignal());
    return value.GetQuality() == Quality::Bad ? text.Of(value) : text.WithUnit(text.Of(value));
}

void widgetSymbol::Validate(ValidationResults &results) const
{
    BasicTextWidget::Validate(results);
    if (m_source.GetFilePath().empty())
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "source"),
                    "Мнемосимвол «" + GetPath() +
                        "»: рисунок не выбран. Выберите его на панели «Мнемосимволы» или задайте "
                        "файл SVG.");
}

} // namespace Nodes
