#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/HistoryColumn.h"
#include "nodes/values/SignalValue.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Nodes {

struct HistoryAnswer;

/// One sample of a history's answer: of which signal, when, what. Shares the column that it stands
/// in, so a copy costs a pointer. Plain value, any thread.
class NODES_EXPORT SignalHistoryResponse
{
public:
    /// `index` is within the column.
    SignalHistoryResponse(std::shared_ptr<const HistoryColumn> column, std::size_t index);
    /// All samples of an answer, signal by signal, for those who take them one by one.
    static std::vector<SignalHistoryResponse> AllOf(const HistoryAnswer &answer);

    const NodeLink &GetNodeLink() const { return m_column->signal; }
    unsigned long GetNodeId() const { return m_column->signal.GetNodeId(); }
    /// Milliseconds since 1970-01-01 00:00 UTC; for an aggregate its begin.
    std::uint64_t GetTime() const;
    /// NaN for a gap; for an aggregate its last.
    double ToDouble() const { return m_column->numbers[m_index]; }
    /// The number or text with its time and quality; the error NotAvailable for a gap.
    SignalValue GetValue() const;
    /// Non-null for an aggregated sample; lives as long as this answer.
    const IntervalSample *getIntervalSample() const;

private:
    std::shared_ptr<const HistoryColumn> m_column;
    std::size_t m_index;
};

} // namespace Nodes
