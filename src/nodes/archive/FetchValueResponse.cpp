#include "nodes/archive/FetchValueResponse.h"

#include "nodes/archive/HistoryAnswer.h"
#include "nodes/archive/SignalHistoryResponse.h"

#include <algorithm>

namespace Nodes {

namespace {

SignalValue valueAt(Timestamp moment, const std::shared_ptr<const HistoryColumn> &column)
{
    const auto &times = column->times;
    const auto after = std::upper_bound(times.begin(), times.end(), moment);
    if (after == times.begin() && !column->result)
        return column->result;
    if (after == times.begin())
        return Result(Result::NotFound, "nothing is known of that time");
    return SignalHistoryResponse(column, std::size_t(after - times.begin()) - 1).GetValue();
}

} // namespace

FetchValueResponse FetchValueResponse::At(Timestamp moment, const HistoryAnswer &answer)
{
    FetchValueResponse response;
    response.result = answer.result;
    for (const auto &column : answer.columns)
        response.values.emplace_back(column->signal, valueAt(moment, column));
    return response;
}

} // namespace Nodes
