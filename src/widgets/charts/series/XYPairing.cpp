#include "widgets/charts/series/XYPairing.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace Widgets {

namespace {

constexpr double never = std::numeric_limits<double>::infinity();

auto firstFrom(const std::vector<SeriePoint> &samples, double time)
{
    return std::lower_bound(samples.begin(), samples.end(), time,
                            [](const SeriePoint &sample, double at) { return sample.x < at; });
}

Nodes::Quality worse(Nodes::Quality a, Nodes::Quality b)
{
    const auto rank = [](Nodes::Quality quality) {
        return quality == Nodes::Quality::Stale ? 2
               : quality == Nodes::Quality::Bad ? 3
                                                : int(quality);
    };
    return rank(a) < rank(b) ? b : a;
}

void eraseBefore(std::vector<SeriePoint> &samples, double time)
{
    samples.erase(samples.begin(), firstFrom(samples, time));
}

} // namespace

void XYPairing::setTolerance(double milliseconds)
{
    const double tolerance = std::isfinite(milliseconds) ? std::max(milliseconds, 0.0) : 0.0;
    if (tolerance == m_tolerance)
        return;
    m_tolerance = tolerance;
    m_changedFrom = -never;
}

void XYPairing::add(Samples &samples, const SeriePoint &sample)
{
    if (std::isfinite(sample.x) && SeriePoints::insert(samples, sample))
        m_changedFrom = std::min(m_changedFrom, sample.x);
}

void XYPairing::add(Samples &samples, const Samples &added)
{
    for (const SeriePoint &sample : added)
        m_changedFrom = std::min(m_changedFrom, sample.x);
    samples.insert(samples.end(), added.begin(), added.end());
    SeriePoints::sort(samples);
}

void XYPairing::trimLeft(double time)
{
    eraseBefore(m_x, time);
    eraseBefore(m_y, time);
    const auto kept = std::find_if(m_pairs.begin(), m_pairs.end(),
                                   [time](const Pair &pair) { return pair.time >= time; });
    m_pairs.erase(m_pairs.begin(), kept);
}

void XYPairing::clear()
{
    m_x = {};
    m_y = {};
    m_pairs = {};
    m_changedFrom = never;
}

double XYPairing::lastTime() const
{
    const double x = m_x.empty() ? 0 : m_x.back().x;
    return m_y.empty() ? x : std::max(x, m_y.back().x);
}

double XYPairing::timeOf(const Match &match) const
{
    return std::max(m_x[match.x].x, m_y[match.y].x);
}

XYPairing::Pair XYPairing::pairOf(const Match &match) const
{
    const SeriePoint &x = m_x[match.x];
    const SeriePoint &y = m_y[match.y];
    if (!std::isfinite(x.y) || !std::isfinite(y.y)) {
        constexpr double gap = std::numeric_limits<double>::quiet_NaN();
        return {timeOf(match), gap, gap, Nodes::Quality::Bad};
    }
    return {timeOf(match), x.y, y.y, worse(x.quality, y.quality)};
}

void XYPairing::match(const Samples &samples, const Samples &others, double from, bool isX,
                      std::vector<Match> &found) const
{
    for (auto sample = firstFrom(samples, from); sample != samples.end(); ++sample) {
        auto nearest = firstFrom(others, sample->x);
        const bool hasEarlier = nearest != others.begin();
        if (nearest == others.end() && !hasEarlier)
            return;
        if (hasEarlier && (nearest == others.end() ||
                           sample->x - std::prev(nearest)->x <= nearest->x - sample->x))
            nearest = firstFrom(others, std::prev(nearest)->x);
        if (std::abs(nearest->x - sample->x) > m_tolerance)
            continue;
        const auto own = std::size_t(sample - samples.begin());
        const auto other = std::size_t(nearest - others.begin());
        found.push_back(isX ? Match{own, other} : Match{other, own});
    }
}

const std::vector<XYPairing::Pair> &XYPairing::pairs()
{
    if (m_changedFrom == never)
        return m_pairs;
    // Whoever has the new sample for a partner lies within the tolerance of it, so does his pair.
    const double from = m_changedFrom - m_tolerance;
    m_changedFrom = never;
    const auto kept = std::find_if(m_pairs.begin(), m_pairs.end(),
                                   [from](const Pair &pair) { return pair.time >= from; });
    m_pairs.erase(kept, m_pairs.end());
    std::vector<Match> found;
    match(m_x, m_y, from - m_tolerance, true, found);
    match(m_y, m_x, from - m_tolerance, false, found);
    const auto key = [this](const Match &match) {
        return std::tuple(timeOf(match), match.x, match.y);
    };
    std::sort(found.begin(), found.end(),
              [&key](const Match &a, const Match &b) { return key(a) < key(b); });
    found.erase(
        std::unique(found.begin(), found.end(),
                    [](const Match &a, const Match &b) { return a.x == b.x && a.y == b.y; }),
        found.end());
    for (const Match &one : found) {
        if (timeOf(one) >= from)
            m_pairs.push_back(pairOf(one));
    }
    return m_pairs;
}

} // namespace Widgets
