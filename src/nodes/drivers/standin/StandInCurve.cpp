#include "nodes/drivers/standin/StandInCurve.h"

#include "nodes/model/KindInfo.h"
#include "nodes/signals/BasicSignal.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Nodes {

namespace {

constexpr double fullTurn = 6.283185307179586;
constexpr double closedFor = 8; // s, of a contact
constexpr double swing = 0.35;  // of the range, to either side of its middle

bool isWritable(const BasicSignal &signal)
{
    const PropertyDescriptor *writable =
        signal.GetKind() ? signal.GetKind()->FindProperty(BasicSignal::Prop::Writable.valueId)
                         : nullptr;
    return writable && *static_cast<const bool *>(writable->binding.data(signal));
}

} // namespace

StandInCurve::StandInCurve(const BasicSignal &signal)
    : m_type(signal.GetValueType()),
      m_minimum(signal.GetMinimum()),
      m_maximum(signal.GetMaximum()),
      m_decimals(signal.GetDecimals()),
      m_isSteady(isWritable(signal)),
      m_seed(signal.GetId())
{
    if (!(m_minimum < m_maximum)) { // no range given
        m_minimum = 0;
        m_maximum = 100;
    }
}

// 0 to 1, far apart for neighbouring ids.
double StandInCurve::fraction(unsigned salt) const
{
    std::uint64_t mixed =
        (std::uint64_t(m_seed) + salt * 0x632BE59BD9B4E019u) * 0x9E3779B97F4A7C15u;
    mixed ^= mixed >> 29;
    return double(mixed % 10007) / 10007;
}

double StandInCurve::numberAt(double seconds) const
{
    const double middle = (m_minimum + m_maximum) / 2;
    if (m_isSteady)
        return middle;
    const double slow = fullTurn * (seconds / (180 + 240 * fraction(1)) + fraction(2));
    const double fast = fullTurn * (seconds / (20 + 40 * fraction(3)) + fraction(4));
    return middle + (m_maximum - m_minimum) * swing * (0.8 * std::sin(slow) + 0.2 * std::sin(fast));
}

SignalValue StandInCurve::At(double seconds) const
{
    if (m_type == enSignalValueType::String)
        return SignalValue(std::string("Имитация"));
    if (m_type == enSignalValueType::Bool) {
        const double cycle = 200 + 400 * fraction(5);
        const double phase = std::fmod(seconds + cycle * fraction(6), cycle);
        return SignalValue(!m_isSteady && phase < closedFor);
    }
    const double scale = m_type == enSignalValueType::Double ? std::pow(10., m_decimals) : 1;
    const double rounded = std::round(numberAt(seconds) * scale) / scale;
    return SignalValue(std::clamp(rounded, m_minimum, m_maximum)).ConvertedTo(m_type);
}

} // namespace Nodes
