#include "nodes/visual/elements/ValueExtremes.h"

#include "nodes/values/Clock.h"
#include "nodes/values/SignalValue.h"

#include <algorithm>
#include <cmath>

namespace Nodes {

void ValueExtremes::Take(const SignalValue &value)
{
    const double number = value.ToDouble();
    if (!value.IsGood() || std::isnan(number))
        return;
    const std::lock_guard lock(m_mutex);
    m_state.minimum = std::min(m_state.minimum.value_or(number), number);
    m_state.maximum = std::max(m_state.maximum.value_or(number), number);
}

void ValueExtremes::Reset()
{
    const std::lock_guard lock(m_mutex);
    m_state = {std::nullopt, std::nullopt, Clock::Current().Now()};
}

ValueExtremes::State ValueExtremes::Get() const
{
    const std::lock_guard lock(m_mutex);
    return m_state;
}

} // namespace Nodes
