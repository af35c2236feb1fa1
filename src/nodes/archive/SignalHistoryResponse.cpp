#include "nodes/archive/SignalHistoryResponse.h"

#include "nodes/archive/HistoryAnswer.h"
#include "nodes/archive/QualityOrder.h"

#include <cmath>

namespace Nodes {

SignalHistoryResponse::SignalHistoryResponse(std::shared_ptr<const HistoryColumn> column,
                                             std::size_t index)
    : m_column(std::move(column)), m_index(index)
{
}

std::vector<SignalHistoryResponse> SignalHistoryResponse::AllOf(const HistoryAnswer &answer)
{
    std::size_t count = 0;
    for (const auto &column : answer.columns)
        count += column->times.size();
    std::vector<SignalHistoryResponse> samples;
    samples.reserve(count);
    for (const auto &column : answer.columns) {
        for (std::size_t i = 0; i < column->times.size(); ++i)
            samples.emplace_back(column, i);
    }
    return samples;
}

std::uint64_t SignalHistoryResponse::GetTime() const
{
    const Timestamp time = m_column->times[m_index];
    return time > 0 ? static_cast<std::uint64_t>(time) / 1000 : 0;
}

SignalValue SignalHistoryResponse::GetValue() const
{
    const double number = ToDouble();
    const Quality quality = m_column->qualities[m_index];
    SignalValue value =
        std::isnan(number) ? SignalValue(Result(Result::NotAvailable)) : SignalValue(number);
    if (!m_column->texts.empty() && IsKnown(quality))
        value.SetValue(m_column->texts[m_index]);
    value.SetQuality(quality);
    value.SetTimes(m_column->times[m_index], 0);
    if (const IntervalSample *interval = getIntervalSample())
        value.SetIntervalSample(std::shared_ptr<const IntervalSample>(m_column, interval));
    return value;
}

const IntervalSample *SignalHistoryResponse::getIntervalSample() const
{
    return m_column->intervals.empty() ? nullptr : &m_column->intervals[m_index];
}

} // namespace Nodes
