#include "nodes/reports/data/RowAggregator.h"

#include <algorithm>
#include <cmath>

namespace Nodes {

namespace {

constexpr double hour = 3600e6; // microseconds

} // namespace

RowAggregator::RowAggregator(const std::vector<ReportSpan> &rows, double threshold)
    : m_rows(rows), m_threshold(threshold), m_facts(rows.size())
{
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        m_facts[i].length = m_rows[i].end - m_rows[i].begin;
}

void RowAggregator::Add(Timestamp time, double number, Quality quality)
{
    if (m_last && time <= m_last->time)
        return;
    holdUntil(time);
    const bool isKnown =
        std::isfinite(number) && quality != Quality::Bad && quality != Quality::Stale;
    m_last = Sample{time, number, quality, isKnown};
    if (!isKnown)
        return;
    const bool isRunning = number > m_threshold;
    if (isRunning && m_wasRunning && !*m_wasRunning)
        noteStart(time);
    m_wasRunning = isRunning;
}

void RowAggregator::noteStart(Timestamp time)
{
    while (m_row < m_rows.size() && m_rows[m_row].end <= time)
        ++m_row;
    if (m_row < m_rows.size() && m_rows[m_row].begin <= time) {
        double &starts = m_facts[m_row].starts;
        starts = std::isnan(starts) ? 1 : starts + 1;
    }
}

// The last sample counts in every row that it reaches into, up to that time.
void RowAggregator::holdUntil(Timestamp time)
{
    if (!m_last)
        return;
    for (; m_row < m_rows.size(); ++m_row) {
        const ReportSpan &row = m_rows[m_row];
        const Timestamp from = std::max(row.begin, m_last->time);
        const Timestamp to = std::min(row.end, time);
        if (m_last->isKnown && from < to)
            fill(m_facts[m_row], to - from);
        if (row.end > time)
            return;
    }
}

void RowAggregator::fill(SignalFacts &facts, Timestamp length)
{
    const double number = m_last->number;
    if (facts.known == 0) {
        facts.first = number;
        facts.integral = facts.hours = 0;
        facts.starts = std::isnan(facts.starts) ? 0 : facts.starts;
    }
    facts.last = number;
    facts.minimum = std::fmin(facts.minimum, number);
    facts.maximum = std::fmax(facts.maximum, number);
    facts.integral += number * double(length);
    facts.hours += number > m_threshold ? double(length) : 0;
    facts.known += length;
    if (m_last->quality == Quality::Uncertain)
        facts.worst = Quality::Uncertain;
}

std::vector<SignalFacts> RowAggregator::Finish(Timestamp heldUntil)
{
    if (m_last && heldUntil > m_last->time)
        holdUntil(heldUntil);
    for (SignalFacts &facts : m_facts) {
        if (facts.known == 0) {
            facts.worst = Quality::Bad;
            facts.starts = SignalFacts::None;
            continue;
        }
        facts.mean = facts.integral / double(facts.known);
        facts.integral /= hour;
        facts.hours /= hour;
    }
    return std::move(m_facts);
}

} // namespace Nodes
