#include "apps/common/history/SignalCurve.h"

#include "apps/common/history/Wander.h"

#include <algorithm>
#include <cmath>

namespace Host {

namespace {

using Nodes::Timestamp;
using Kind = SignalProfile::Kind;

constexpr Timestamp second = 1000000;
constexpr Timestamp minute = 60 * second;
constexpr Timestamp hour = 60 * minute;
constexpr Timestamp day = 24 * hour;
constexpr Timestamp shiftBegin = 6 * hour;
constexpr double warmestHour = 15;
constexpr double fullTurn = 6.283185307179586;
constexpr Timestamp settlingTime = 6 * hour; // before the end

const Stretches::Habit whenDown{9 * day, 0.6, 25 * minute, 90 * minute};

std::uint64_t seedOf(std::uint64_t seed, std::string_view name)
{
    std::uint64_t sum = 0xcbf29ce484222325u;
    for (const char letter : name)
        sum = (sum ^ static_cast<unsigned char>(letter)) * 0x100000001b3u;
    return Wander::mix(seed, sum);
}

Stretches::Habit leaving(double timesAWeek)
{
    constexpr double mostOften = 200;
    const double times = std::clamp(timesAWeek, 0.0, mostOften);
    const auto slot = Timestamp(double(7 * day) / std::max(1.0, times));
    return {slot, std::min(1.0, times), 2 * minute, std::min(30 * minute, slot / 2)};
}

double inHours(Timestamp span)
{
    return double(span) / double(hour);
}

std::int64_t shiftDay(Timestamp local)
{
    return (local - shiftBegin) / day;
}

} // namespace

SignalCurve::SignalCurve(const SignalProfile &profile, const PlantDays &days, std::string_view name)
    : m_profile(profile),
      m_days(days),
      m_seed(seedOf(days.seed, name)),
      m_down(Wander::mix(seedOf(days.seed, name.substr(0, name.find('.'))), 1), whenDown),
      m_leaves(Wander::mix(m_seed, 2), leaving(profile.swing)),
      m_scale(std::pow(10, profile.decimals))
{
}

double SignalCurve::at(Timestamp time) const
{
    double value = plain(time);
    if (!std::isnan(m_profile.down)) {
        const bool isGradual = m_profile.kind == Kind::Process;
        const double share = isGradual ? m_down.strength(time, 4 * minute, 12 * minute)
                                       : double(m_down.contains(time));
        value += (m_profile.down - value) * share;
    }
    value = std::clamp(value, m_profile.least, m_profile.most);
    return std::round(value * m_scale) / m_scale;
}

double SignalCurve::plain(Timestamp time) const
{
    const std::int64_t place = time / second;
    switch (m_profile.kind) {
    case Kind::Process:
        return process(time) + m_profile.noise * Wander::normal(m_seed, place);
    case Kind::Setpoint:
        return setpoint(time);
    case Kind::State:
        return m_leaves.contains(time) ? 1 - m_profile.mean : m_profile.mean;
    case Kind::Duty:
        return hasTurn(time) ? m_profile.mean + m_profile.noise * Wander::normal(m_seed, place) : 0;
    case Kind::Counter:
        return std::max(0.0, m_profile.mean - m_profile.swing * inHours(m_days.end - time));
    case Kind::Constant:
        break;
    }
    return m_profile.mean;
}

/// 1 in the past, towards 0 where live values go on.
double SignalCurve::settling(Timestamp time) const
{
    return std::clamp(double(m_days.end - time) / double(settlingTime), 0.0, 1.0);
}

double SignalCurve::weather(Timestamp time) const
{
    const double local = std::fmod(inHours(time + m_days.utcOffset), 24);
    const double daily = std::cos(fullTurn * (local - warmestHour) / 24);
    const double front = Wander::smooth(m_days.seed, double(time) / double(2 * day));
    return 0.65 * daily + 0.35 * front;
}

double SignalCurve::process(Timestamp time) const
{
    const double swing = std::abs(m_profile.swing);
    const double hours = inHours(time);
    const bool isStepped = Wander::even(Wander::mix(m_seed, 3), time / (11 * hour)) > 0.75;
    const double far = m_profile.swing * weather(time) + (isStepped ? 0.3 * swing : 0) +
                       0.3 * swing * Wander::smooth(Wander::mix(m_seed, 4), hours / 3);
    const double near = 0.12 * swing * Wander::smooth(Wander::mix(m_seed, 5), hours * 4);
    return m_profile.mean + settling(time) * far + near;
}

double SignalCurve::setpoint(Timestamp time) const
{
    if (time + 2 * settlingTime > m_days.end)
        return m_profile.mean;
    const double step = 2 * Wander::even(m_seed, time / (31 * hour)) - 1;
    return m_profile.mean + m_profile.swing * std::round(2 * step) / 2;
}

/// At the end it is the first one's.
bool SignalCurve::hasTurn(Timestamp time) const
{
    const std::int64_t daysBefore =
        shiftDay(m_days.end + m_days.utcOffset) - shiftDay(time + m_days.utcOffset);
    return (daysBefore % 2 != 0) == m_profile.isSecond;
}

} // namespace Host
