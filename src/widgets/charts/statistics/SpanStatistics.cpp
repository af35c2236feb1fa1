#include "widgets/charts/statistics/SpanStatistics.h"

#include "nodes/values/IntervalSample.h"

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

Nodes::Quality worse(Nodes::Quality left, Nodes::Quality right)
{
    const auto rank = [](Nodes::Quality quality) {
        return quality == Nodes::Quality::Bad         ? 3
               : quality == Nodes::Quality::Stale     ? 2
               : quality == Nodes::Quality::Uncertain ? 1
                                                      : 0;
    };
    return rank(left) < rank(right) ? right : left;
}

} // namespace

SpanIntegrator::SpanIntegrator(double from, double to, Join join)
    : m_from(std::min(from, to)), m_to(std::max(from, to)), m_join(join)
{
}

void SpanIntegrator::extend(double y)
{
    m_sums.minimum = std::fmin(m_sums.minimum, y);
    m_sums.maximum = std::fmax(m_sums.maximum, y);
}

void SpanIntegrator::fill(double from, double to, double y)
{
    m_area += y * (to - from);
    m_sums.covered += to - from;
}

void SpanIntegrator::join(const Sample &from, const Sample &to)
{
    const double left = std::max(from.x, m_from);
    const double right = std::min(to.x, m_to);
    if (!(left < right) || !from.isValid)
        return;
    if (m_join == Join::Steps) {
        extend(from.y);
        return fill(left, right, from.y);
    }
    if (!to.isValid)
        return;
    const auto at = [&](double x) {
        return from.y + (to.y - from.y) * (x - from.x) / (to.x - from.x);
    };
    extend(at(left));
    extend(at(right));
    fill(left, right, (at(left) + at(right)) / 2);
}

void SpanIntegrator::add(double x, double y, Nodes::Quality quality)
{
    if (!std::isfinite(x) || (m_last && x < m_last->x))
        return;
    const Sample sample{x, y, std::isfinite(y) && quality != Nodes::Quality::Bad};
    if (m_last)
        join(*m_last, sample);
    m_last = sample;
    if (!sample.isValid)
        return;
    if (x >= m_from && x <= m_to) {
        extend(y);
        ++m_sums.count;
    }
    if (x <= m_to)
        m_sums.worst = worse(m_sums.worst, quality);
}

void SpanIntegrator::addAggregate(double begin, double end, const Nodes::IntervalSample &samples)
{
    if (std::isfinite(samples.minimum) && begin < m_to && end > m_from) {
        m_sums.isApproximate = true;
        m_sums.count += samples.count;
        m_sums.worst = worse(m_sums.worst, samples.worst);
        if (begin >= m_from && end <= m_to) {
            extend(samples.minimum);
            extend(samples.maximum);
        }
    }
    const std::size_t counted = m_sums.count;
    add(begin, samples.first, Nodes::Quality::Good);
    if (std::isfinite(samples.minimum) && end > begin) {
        // Within, the line wanders between the extremes: their middle weighs the most of the way.
        const double middle = (samples.minimum + samples.maximum) / 2;
        const double quarter = (end - begin) / 4;
        add(begin + quarter, middle, Nodes::Quality::Good);
        add(end - quarter, middle, Nodes::Quality::Good);
    }
    add(std::max(begin, end - 1), samples.last, Nodes::Quality::Good);
    m_sums.count = counted; // these are made up
}

void SpanIntegrator::hold(double until)
{
    if (m_last && until > m_last->x)
        join(*m_last, {until, m_last->y, m_last->isValid});
}

SpanStatistics SpanIntegrator::finish() const
{
    SpanStatistics sums = m_sums;
    sums.gaps = std::max(0.0, m_to - m_from - sums.covered);
    if (sums.covered > 0) {
        sums.mean = m_area / sums.covered;
        sums.integral = m_area / 1000;
    }
    return sums;
}

} // namespace Widgets
