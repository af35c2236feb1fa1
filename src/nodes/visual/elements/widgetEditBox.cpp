#include "nodes/visual/elements/widgetEditBox.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/NumberText.h"

#include <algorithm>
#include <cmath>

namespace Nodes {

namespace {

constexpr int maximumDecimals = 9;

} // namespace

widgetEditBox::widgetEditBox() : BasicTextWidget(NColor(250, 251, 252), 1, AlignmentRight) {}

KindInfo widgetEditBox::Kind()
{
    return KindBuilder::For<widgetEditBox>("editBox", "Edit box", "Поле ввода")
        .Inherit<BasicTextWidget>()
        .Property<&widgetEditBox::m_angle>(Prop::Angle, "Angle, degrees", "Угол поворота, °")
        .Range(-360, 360)
        .Hint("angle")
        .Property<&widgetEditBox::m_valueType>(Prop::Type, "Value type", "Тип значения")
        .Choice(-1, "signal", "Как у сигнала")
        .Choice(int(enSignalValueType::String), "string", "Строка")
        .Choice(int(enSignalValueType::Bool), "bool", "Логический")
        .Choice(int(enSignalValueType::Int), "int", "Целый")
        .Choice(int(enSignalValueType::Double), "double", "Вещественный")
        .Choice(int(enSignalValueType::ULong), "ulong", "Целый без знака")
        .Property<&widgetEditBox::m_hasStepButtons>(Prop::StepButtons, "Step buttons",
                                                    "Кнопки шага")
        .Property<&widgetEditBox::m_hasKeyboardButton>(Prop::KeyboardButton, "Keyboard button",
                                                       "Кнопка клавиатуры")
        .Property<&widgetEditBox::m_opensKeyboard>(Prop::KeyboardOnClick, "Keyboard on click",
                                                   "Клавиатура по нажатию")
        .Property<&widgetEditBox::m_hasLimits>(Prop::Limits, "Limits", "Проверять пределы")
        .Property<&widgetEditBox::m_minimum>(Prop::Minimum, "Minimum", "Нижний предел")
        .Property<&widgetEditBox::m_maximum>(Prop::Maximum, "Maximum", "Верхний предел")
        .Property<&widgetEditBox::m_step>(Prop::Step, "Step, 0: automatic", "Шаг, 0: сам")
        .Range(0, 1e12)
        .Property<&widgetEditBox::m_isConfirmed>(Prop::Confirm, "Ask before writing",
                                                 "Спрашивать перед записью")
        .Property<&widgetEditBox::m_checksRights>(Prop::CheckRights, "Check rights",
                                                  "Проверять права до ввода")
        .Property<&widgetEditBox::m_editTimeout>(Prop::EditTimeout,
                                                 "Edit ends without input after, s; 0: never",
                                                 "Ввод прекращается без нажатий через, с; 0: нет")
        .Range(0, 3600)
        .Property<&widgetEditBox::m_fontSelector>(Prop::WriteFont, "Font where writable",
                                                  "Шрифт при праве записи")
        .Choice(0, "same", "Тот же")
        .Choice(1, "own", "Свой")
        .Property<&widgetEditBox::m_writeFamily>(Prop::WriteFontFamily, "Its family",
                                                 "Гарнитура при праве записи")
        .Property<&widgetEditBox::m_writePointSize>(Prop::WriteFontSize, "Its size, pt",
                                                    "Размер при праве записи, пт")
        .Range(1, 400)
        .Property<&widgetEditBox::m_isWriteBold>(Prop::WriteBold, "Its bold",
                                                 "Полужирный при праве записи")
        .Property<&widgetEditBox::m_isWriteItalic>(Prop::WriteItalic, "Its italic",
                                                   "Курсив при праве записи");
}

enSignalValueType widgetEditBox::GetValueType() const
{
    if (m_valueType >= 0)
        return enSignalValueType(m_valueType);
    const BasicSignal *signal = GetSignal();
    return signal ? signal->GetValueType() : enSignalValueType::Double;
}

double widgetEditBox::signalLimit(bool isLower) const
{
    const BasicSignal *signal = GetSignal();
    if (!signal)
        return 0;
    return isLower ? signal->GetMinimum() : signal->GetMaximum();
}

double widgetEditBox::GetStep() const
{
    if (m_step > 0)
        return m_step;
    const BasicSignal *signal = GetSignal();
    const bool isReal = GetValueType() == enSignalValueType::Double && signal;
    return isReal ? std::pow(10.0, -signal->GetDecimals()) : 1.0;
}

int widgetEditBox::GetStepDecimals() const
{
    int decimals = 0;
    double scaled = GetStep();
    const auto isWhole = [&scaled] {
        return std::abs(scaled - std::round(scaled)) <= 1e-6 * std::min(1.0, scaled);
    };
    for (; decimals < maximumDecimals && !isWhole(); ++decimals)
        scaled *= 10;
    return decimals;
}

NFont widgetEditBox::GetWriteFont() const
{
    return {m_writeFamily, m_writePointSize, m_isWriteBold, m_isWriteItalic, false, false};
}

void widgetEditBox::GetWriteNodes(NodesArray &nodes) const
{
    if (!GetSignalLink().isEmpty())
        nodes.push_back(GetSignalLink());
}

std::string widgetEditBox::GetDisplayText(const SignalValue &value) const
{
    if (value.GetQuality() == Quality::Bad)
        return NoValueText;
    switch (GetValueType()) {
    case enSignalValueType::Bool:
        return value.ToBool() ? "1" : "0";
    case enSignalValueType::Double:
        return FormatFixed(value.ToDouble(), GetStepDecimals());
    default:
        return value.ToString();
    }
}

void widgetEditBox::CollectDemands(AccessDemands &demands) const
{
    NodesArray nodes;
    GetWriteNodes(nodes);
    for (const NodeLink &node : nodes)
        demands.push_back({PrivilegeWrite, node});
}

} // namespace Nodes
