#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/ValueLink.h"

#include <vector>

namespace Nodes {

struct HistoryAnswer;

/// The values that signals had at one moment. Plain value, any thread.
struct NODES_EXPORT FetchValueResponse
{
    Result result;                 ///< of the request as a whole
    std::vector<ValueLink> values; ///< in the order asked for; an error where nothing is known

    /// From an answer about a span that begins and ends with `moment`: of each signal what was
    /// valid then, with the time since when it was.
    static FetchValueResponse At(Timestamp moment, const HistoryAnswer &answer);
};

} // namespace Nodes
