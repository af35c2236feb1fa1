#include "nodes/visual/widgetButton.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/NumberText.h"

namespace Nodes {

void widgetButton::describeText(KindBuilder &builder)
{
    builder.Property<&widgetButton::m_text>(12200, "text", "Text", "Текст")
        .Hint("multiline")
        .Property<&widgetButton::m_onText>(12203, "onText", "Text of true", "Текст для 1")
        .Property<&widgetButton::m_offText>(12204, "offText", "Text of false", "Текст для 0")
        .Property<&widgetButton::m_family>(12210, "fontFamily", "Font family", "Шрифт")
        .Property<&widgetButton::m_pointSize>(12211, "fontSize", "Font size, pt",
                                              "Размер шрифта, пт")
        .Range(1, 400)
        .Property<&widgetButton::m_isBold>(12212, "bold", "Bold", "Полужирный")
        .Property<&widgetButton::m_isItalic>(12213, "italic", "Italic", "Курсив")
        .Property<&widgetButton::m_isUnderlined>(12214, "underline", "Underline", "Подчёркнутый")
        .Property<&widgetButton::m_isStruckOut>(12215, "strikeOut", "Strike-out", "Зачёркнутый")
        .Property<&widgetButton::m_horizontal>(12220, "align", "Horizontal alignment",
                                               "Выравнивание по горизонтали")
        .Choice(AlignmentLeft, "left", "Слева")
        .Choice(AlignmentHCenter, "center", "По центру")
        .Choice(AlignmentRight, "right", "Справа")
        .Property<&widgetButton::m_vertical>(12221, "valign", "Vertical alignment",
                                             "Выравнивание по вертикали")
        .Choice(AlignmentTop, "top", "Сверху")
        .Choice(AlignmentVCenter, "center", "По центру")
        .Choice(AlignmentBottom, "bottom", "Снизу")
        .Property<&widgetButton::m_textColor>(12230, "color", "Text colour", "Цвет текста")
        .Property<&widgetButton::m_angle>(12235, "angle", "Angle, degrees", "Угол поворота, °")
        .Range(-360, 360)
        .Hint("angle");
}

KindInfo widgetButton::Kind()
{
    const std::vector<unsigned> actions{NodeType::TypeAction, NodeType::TypeArchiverAction};
    KindBuilder builder = KindBuilder::For<widgetButton>(NodeType::enNodeSubtype(0x15003), "button",
                                                         "Button", "Кнопка");
    builder.Inherit<BasicWidget>();
    describeText(builder);
    return builder.Property<&widgetButton::m_style>(12260, "style", "Style", "Стиль")
        .Choice(StyleApplication, "application", "Как у программы")
        .Choice(StyleWindows, "windows", "Windows")
        .Choice(StyleWindowsXP, "windowsXP", "Windows XP")
        .Choice(StyleWindowsVista, "windowsVista", "Windows Vista")
        .Choice(StyleMacintosh, "macintosh", "Macintosh")
        .Choice(StyleFusion, "fusion", "Fusion")
        .Choice(StyleTransparent, "transparent", "Прозрачный")
        .Property<&widgetButton::m_backgroundColor>(12231, "background", "Background", "Цвет фона")
        .Property<&widgetButton::m_image>(12250, "image", "Picture", "Рисунок")
        .Property<&widgetButton::m_hotKey>(12261, "hotKey", "Hot key", "Горячая клавиша")
        .Property<&widgetButton::m_pressActions>(12262, "pressActions", "Actions of pressing",
                                                 "Действия нажатия кнопки")
        .Refers(actions)
        .Property<&widgetButton::m_releaseActions>(12263, "releaseActions", "Actions of releasing",
                                                   "Действия отпускания кнопки")
        .Refers(actions);
}

NFont widgetButton::GetFont() const
{
    return {m_family, m_pointSize, m_isBold, m_isItalic, m_isUnderlined, m_isStruckOut};
}

std::string widgetButton::valueText(const SignalValue &value) const
{
    if (value.GetQuality() == Quality::Bad)
        return "----";
    const BasicSignal *signal = GetSignal();
    std::string text = value.GetType() == enSignalValueType::Double && signal
                           ? FormatFixed(value.ToDouble(), signal->GetDecimals())
                           : value.ToString();
    if (signal && !signal->GetUnit().empty())
        text += " " + signal->GetUnit();
    return text;
}

std::string widgetButton::GetDisplayText() const
{
    if (GetSignalLink().isEmpty())
        return m_text;
    const SignalValue value = GetValue();
    if (value.GetQuality() != Quality::Bad && value.GetType() == enSignalValueType::Bool) {
        const std::string &own = value.ToBool() ? m_onText : m_offText;
        if (!own.empty())
            return own;
    }
    return m_text.empty() ? valueText(value) : m_text;
}

} // namespace Nodes
