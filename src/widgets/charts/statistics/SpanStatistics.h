#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/Quality.h"

#include <cstddef>
#include <limits>
#include <optional>

namespace Nodes {
struct IntervalSample;
}

namespace Widgets {

/// What a signal did over a span of time. NaN stands for what there is none of.
struct SpanStatistics
{
    static constexpr double None = std::numeric_limits<double>::quiet_NaN();

    double mean = None;    ///< weighted by time, gaps left out
    double minimum = None; ///< of what is drawn within the span, its ends included
    double maximum = None;
    double integral = None;                      ///< value times seconds, gaps left out
    double covered = 0;                          ///< ms of the span with a value
    double gaps = 0;                             ///< ms without
    std::size_t count = 0;                       ///< samples within the span
    bool isApproximate = false;                  ///< made of aggregates
    Nodes::Quality worst = Nodes::Quality::Good; ///< of the samples with a value
};

/// Adds up samples in the order of time as they are drawn. Any thread.
class WIDGETS_EXPORT SpanIntegrator
{
public:
    enum class Join {
        Lines, ///< straight from sample to sample
        Steps  ///< a sample holds until the next one
    };

    /// Of `from` to `to`, ms; samples may lie beyond, the one before and the one behind belong to
    /// the picture.
    SpanIntegrator(double from, double to, Join join);

    /// A number that is none, or bad, is a gap up to the next sample; with lines from the last one.
    void add(double x, double y, Nodes::Quality quality);
    /// Samples that an archive has put together; `begin` and `end` in ms as `x` above. What they
    /// did within is known by its extremes only.
    void addAggregate(double begin, double end, const Nodes::IntervalSample &samples);
    /// What was last goes on unchanged until there, if that is later.
    void hold(double until);
    SpanStatistics finish() const;

private:
    struct Sample
    {
        double x;
        double y;
        bool isValid;
    };

    void extend(double y);
    void join(const Sample &from, const Sample &to);
    void fill(double from, double to, double y);

    double m_from;
    double m_to;
    Join m_join;
    std::optional<Sample> m_last;
    SpanStatistics m_sums; // integral in value times ms
    double m_area = 0;
};

} // namespace Widgets
