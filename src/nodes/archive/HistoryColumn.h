#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/IntervalSample.h"
#include "nodes/values/Result.h"

#include <string>
#include <vector>

namespace Nodes {

/// What a history knows of one signal over a span, oldest first: its samples or, where those are
/// more than were asked for, aggregates. The vectors are of one length but for `texts`, and
/// `intervals`, which is empty for plain samples. Not changed once it is answered, so it is shared;
/// any thread.
struct HistoryColumn
{
    NodeLink signal;
    /// Why nothing, or not all, is known: AccessDenied, NotFound, NotAvailable, StorageError, ...
    Result result;

    std::vector<Timestamp> times;   ///< of an aggregate its begin; ascending, each once
    std::vector<double> numbers;    ///< of an aggregate its last; NaN is a gap: nothing valid there
    std::vector<Quality> qualities; ///< of an aggregate its worst
    std::vector<IntervalSample> intervals;
    /// Of plain samples; "" of those that are no text. Empty where none is.
    std::vector<std::string> texts;
};

} // namespace Nodes
