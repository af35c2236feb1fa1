#include "nodes/visual/elements/widgetButton.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/signals/ValueText.h"

namespace Nodes {

widgetButton::widgetButton() : TextProperties(AlignmentHCenter) {}

KindInfo widgetButton::Kind()
{
    const std::vector<unsigned> actions{NodeType::TypeAction, NodeType::TypeArchiverAction};
    KindBuilder builder = KindBuilder::For<widgetButton>("button", "Button", "Кнопка");
    builder.Inherit<BasicWidget>()
        .Property<&widgetButton::m_text>(Prop::Text, "Text", "Текст")
        .Hint("multiline")
        .Property<&widgetButton::m_onText>(Prop::OnText, "Text of true", "Текст для 1")
        .Property<&widgetButton::m_offText>(Prop::OffText, "Text of false", "Текст для 0");
    DescribeText(builder);
    return builder
        .Property<&widgetButton::m_angle>(Prop::Angle, "Angle, degrees", "Угол поворота, °")
        .Range(-360, 360)
        .Hint("angle")
        .Property<&widgetButton::m_style>(Prop::Style, "Style", "Стиль")
        .Choice(StyleApplication, "application", "Как у программы")
        .Choice(StyleWindows, "windows", "Windows")
        .Choice(StyleWindowsXP, "windowsXP", "Windows XP")
        .Choice(StyleWindowsVista, "windowsVista", "Windows Vista")
        .Choice(StyleMacintosh, "macintosh", "Macintosh")
        .Choice(StyleFusion, "fusion", "Fusion")
        .Choice(StyleTransparent, "transparent", "Прозрачный")
        .Property<&widgetButton::m_backgroundColor>(Prop::Background, "Background", "Цвет фона")
        .Property<&widgetButton::m_image>(Prop::Image, "Picture", "Рисунок")
        .Property<&widgetButton::m_hotKey>(Prop::HotKey, "Hot key", "Горячая клавиша")
        .Hint("keys")
        .Property<&widgetButton::m_pressActions>(Prop::PressActions, "Actions of pressing",
                                                 "Действия нажатия кнопки")
        .Refers(actions)
        .Property<&widgetButton::m_releaseActions>(Prop::ReleaseActions, "Actions of releasing",
                                                   "Действия отпускания кнопки")
        .Refers(actions);
}

std::string widgetButton::GetDisplayText(const SignalValue &value) const
{
    if (GetSignalLink().isEmpty())
        return m_text;
    if (value.GetQuality() != Quality::Bad && value.GetType() == enSignalValueType::Bool) {
        const std::string &own = GetTextOf(value.ToBool());
        if (!own.empty())
            return own;
    }
    if (!m_text.empty())
        return m_text;
    const ValueText text(GetSignal());
    return value.GetQuality() == Quality::Bad ? text.Of(value) : text.WithUnit(text.Of(value));
}

void widgetButton::CollectDemands(AccessDemands &demands) const
{
    const ActionLists gestures = GetActionLists();
    for (const NodeLinks *actions :
         {&m_pressActions, &m_releaseActions, &gestures.onPress, &gestures.onRelease})
        BasicAction::AppendDemands(*actions, demands);
}

} // namespace Nodes
