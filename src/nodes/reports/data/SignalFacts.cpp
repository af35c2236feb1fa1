#include "nodes/reports/data/SignalFacts.h"

namespace Nodes {

double SignalFacts::Get(enReportAggregate aggregate) const
{
    switch (aggregate) {
    case AggregateMean:
        return mean;
    case AggregateMinimum:
        return minimum;
    case AggregateMaximum:
        return maximum;
    case AggregateIntegral:
        return integral;
    case AggregateHours:
        return hours;
    case AggregateStarts:
        return starts;
    case AggregateFirst:
        return first;
    case AggregateLast:
        return last;
    case AggregateChange:
        return last - first;
    }
    return None;
}

} // namespace Nodes
