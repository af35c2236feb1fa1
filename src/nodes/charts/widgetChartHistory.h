#pragma once

#include "nodes/archive/HistoryInquiry.h"
#include "nodes/charts/widgetChart.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace Nodes {

struct HistoryAnswer;
class NodesArray;
class SignalHistoryResponse;

/// A trend: live values of signals and their history.
class NODES_EXPORT widgetChartHistory : public widgetChart
{
public:
    static constexpr auto Code = NodeType::SubtypeChartHistory;

    static KindInfo Kind();

    /// Asks for what the archive holds of the signals of those series within `from` to `to`,
    /// milliseconds since 1970-01-01 00:00 UTC, `to` 0 meaning the present. Success: accepted, the
    /// answer goes to the subscribers, unless another request replaces it. GUI thread.
    [[nodiscard]] Result GetHistory(unsigned long long from, unsigned long long to,
                                    const NodesArray &nodes);
    /// Ends a request that nobody waits for any more: it is not answered.
    void CancelHistory();
    /// How many points of one signal a request is to bring at most, some aggregates of several
    /// samples where there are more: a few for each column of pixels. At least 2.
    void SetPointBudget(std::size_t points);

    using HistorySlot = std::function<void(const std::vector<SignalHistoryResponse> &)>;
    using AnswerSlot = std::function<void(const std::shared_ptr<const HistoryAnswer> &)>;
    /// Called on the history's thread, which must not wait for the GUI.
    Connection ConnectHistory(HistorySlot slot);
    /// The same answer with what went wrong; called before those of ConnectHistory.
    Connection ConnectAnswer(AnswerSlot slot);

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;
    Result OnLastStop() override;

private:
    std::size_t m_pointBudget = 4000;
    SlotList<const std::vector<SignalHistoryResponse> &> m_answered;
    SlotList<const std::shared_ptr<const HistoryAnswer> &> m_answeredWhole;
    HistoryInquiry m_inquiry; // last: its slot calls the lists
};

} // namespace Nodes
