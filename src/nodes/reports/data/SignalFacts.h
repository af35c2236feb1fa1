#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Quality.h"
#include "nodes/values/Timestamp.h"

#include <limits>

namespace Nodes {

/// What one number tells of a signal over a span.
enum enReportAggregate {
    AggregateMean = 1, ///< weighted by time
    AggregateMinimum = 2,
    AggregateMaximum = 3,
    AggregateIntegral = 4, ///< value times hours
    AggregateHours = 5,    ///< running: hours above the threshold
    AggregateStarts = 6,   ///< how often it rose above the threshold
    AggregateFirst = 7,
    AggregateLast = 8,
    AggregateChange = 9 ///< last less first, of counters
};

/// What a signal did over a span, as far as it is known: what is not known counts for nothing,
/// least of all for zero. NaN where there is nothing to tell.
struct NODES_EXPORT SignalFacts
{
    static constexpr double None = std::numeric_limits<double>::quiet_NaN();

    double mean = None; ///< weighted by time
    double minimum = None;
    double maximum = None;
    double integral = None; ///< value times hours, of the time known
    double first = None;    ///< known first: at the begin of the span if it was known there
    double last = None;     ///< known last
    double hours = None;    ///< above the threshold, of the time known
    double starts = None;
    Timestamp known = 0;           ///< microseconds of the span with a value
    Timestamp length = 0;          ///< of the span
    Quality worst = Quality::Good; ///< of the values that count; Bad where none does

    /// Share of the span that is known, 0 to 1.
    double GetCoverage() const { return length > 0 ? double(known) / double(length) : 0; }
    double Get(enReportAggregate aggregate) const;
};

} // namespace Nodes
