#pragma once

#include "support/RuntimeProject.h"

#include "nodes/archive/HistoryAnswer.h"
#include "nodes/archive/SignalHistoryResponse.h"
#include "widgets/charts/time/ChartTime.h"

#include <cmath>
#include <limits>

/// Answers of an archive, made by hand.
namespace Answers {

constexpr double gap = std::numeric_limits<double>::quiet_NaN();

struct Sample
{
    double x; ///< of ChartTime
    double value;
    Nodes::Quality quality = Nodes::Quality::Good;
};

inline Nodes::Timestamp timeAt(double x)
{
    return Nodes::Timestamp(Widgets::ChartTime::toUtc(x)) * 1000;
}

inline void append(Nodes::HistoryAnswer &answer, unsigned long signal,
                   const std::vector<Sample> &samples)
{
    auto column = std::make_shared<Nodes::HistoryColumn>();
    column->signal = Nodes::NodeLink(signal, nullptr);
    for (const Sample &sample : samples) {
        column->times.push_back(timeAt(sample.x));
        column->numbers.push_back(sample.value);
        column->qualities.push_back(sample.quality);
    }
    answer.columns.push_back(column);
}

inline std::vector<Nodes::SignalHistoryResponse> of(unsigned long signal,
                                                    const std::vector<Sample> &samples)
{
    Nodes::HistoryAnswer answer;
    append(answer, signal, samples);
    return Nodes::SignalHistoryResponse::AllOf(answer);
}

inline std::vector<Nodes::SignalHistoryResponse>
ofAggregates(unsigned long signal, const std::vector<Nodes::IntervalSample> &intervals)
{
    Nodes::HistoryAnswer answer;
    auto column = std::make_shared<Nodes::HistoryColumn>();
    column->signal = Nodes::NodeLink(signal, nullptr);
    column->intervals = intervals;
    for (const Nodes::IntervalSample &interval : intervals) {
        column->times.push_back(interval.begin);
        column->numbers.push_back(interval.last);
        column->qualities.push_back(interval.worst);
    }
    answer.columns.push_back(column);
    return Nodes::SignalHistoryResponse::AllOf(answer);
}

} // namespace Answers
