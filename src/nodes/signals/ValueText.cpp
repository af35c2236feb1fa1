#include "nodes/signals/ValueText.h"

#include "nodes/signals/BasicSignal.h"
#include "nodes/values/NumberText.h"

namespace Nodes {

std::string ValueText::OfNumber(double number) const
{
    const int decimals = m_ownDecimals < 0 && m_signal ? m_signal->GetDecimals() : m_ownDecimals;
    return FormatShown(number, decimals < 0 ? 1 : decimals);
}

std::string ValueText::OfLast(const SignalValue &value) const
{
    return value.GetType() == enSignalValueType::Double ? OfNumber(value.ToDouble())
                                                        : value.ToString();
}

std::string ValueText::Of(const SignalValue &value) const
{
    return value.GetQuality() == Quality::Bad ? NoValueText : OfLast(value);
}

std::string ValueText::WithUnit(std::string text) const
{
    return m_signal && !m_signal->GetUnit().empty() ? text + " " + m_signal->GetUnit() : text;
}

} // namespace Nodes
