#include "nodes/alarms/engine/RateCondition.h"

#include <cmath>

namespace Nodes {

namespace {

// However fast values come, a window takes no more than this many.
constexpr Timestamp finest = 256;

} // namespace

void RateCondition::keep(const Sample &sample)
{
    const std::size_t count = m_samples.size();
    // What lies too close to its predecessor gives way to the next: the number just before it
    // holds a little longer.
    if (count >= 2 && sample.time - m_samples[count - 2].time < m_rate.window / finest)
        m_samples.back() = sample;
    else if (count >= 1 && m_samples.back().time == sample.time)
        m_samples.back().number = sample.number;
    else
        m_samples.push_back(sample);
}

AlarmVerdict RateCondition::Judge(const AlarmInput &input)
{
    m_judged = input.now;
    const double number = input.value.ToDouble();
    if (!isTrusted(input.value) || std::isnan(number)) {
        m_samples.clear();
        return AlarmVerdict::Unknown;
    }
    keep({input.now, number});
    const Timestamp begin = input.now - m_rate.window;
    while (m_samples.size() > 1 && m_samples[1].time <= begin)
        m_samples.pop_front();
    if (m_samples.front().time > begin)
        return AlarmVerdict::Unknown;
    double rate = (number - m_samples.front().number) * double(m_rate.per) / double(m_rate.window);
    if (m_rate.direction == Direction::Both)
        rate = std::abs(rate);
    else if (m_rate.direction == Direction::Falling)
        rate = -rate;
    return compare(rate, m_threshold.limit, input.isActive);
}

Timestamp RateCondition::NextLook() const
{
    if (m_samples.empty())
        return Never;
    const bool isFull = m_samples.front().time <= m_judged - m_rate.window;
    if (isFull && m_samples.size() == 1)
        return Never;
    return (isFull ? m_samples[1] : m_samples.front()).time + m_rate.window;
}

} // namespace Nodes
