#include "nodes/charts/widgetChartHistory.h"

#include "nodes/archive/HistoryAnswer.h"
#include "nodes/archive/HistoryRequest.h"
#include "nodes/archive/SignalHistoryResponse.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/NodesArray.h"
#include "nodes/system/systemCore.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr Timestamp microseconds = 1000; // of a millisecond
// Beyond it a time has no sense, and no sum of two overflows.
constexpr unsigned long long latest = 253402300799999; // 9999-12-31

NodeLinks signalsOf(const NodesArray &series)
{
    NodeLinks signals;
    for (const NodeLink &link : series) {
        if (const auto *serie = dynamic_cast<const widgetChartBasicSerie *>(link.GetNode()))
            serie->CollectArchived(signals);
    }
    std::sort(signals.begin(), signals.end(), [](const NodeLink &left, const NodeLink &right) {
        return left.GetNodeId() < right.GetNodeId();
    });
    signals.erase(std::unique(signals.begin(), signals.end()), signals.end());
    return signals;
}

} // namespace

KindInfo widgetChartHistory::Kind()
{
    return KindBuilder::For<widgetChartHistory>("chartHistory", "Trend", "Тренд")
        .Inherit<widgetChartHistory>();
}

void widgetChartHistory::Describe(KindBuilder &builder)
{
    builder.Inherit<widgetChart>();
}

Result widgetChartHistory::GetHistory(unsigned long long from, unsigned long long to,
                                      const NodesArray &nodes)
{
    const systemCore *core = GetCore();
    if (!core)
        return Result(this, Result::NotAvailable, "no running station");
    HistoryRequest request;
    request.from = Timestamp(std::min(from, latest)) * microseconds;
    request.to = Timestamp(std::min(to, latest)) * microseconds;
    request.nodes = signalsOf(nodes);
    request.maxPoints = m_pointBudget;
    return m_inquiry.Ask(core->GetHistory(), request,
                         [this](const std::shared_ptr<const HistoryAnswer> &answer) {
                             m_answeredWhole(answer);
                             m_answered(SignalHistoryResponse::AllOf(*answer));
                         });
}

void widgetChartHistory::CancelHistory()
{
    m_inquiry.Cancel();
}

void widgetChartHistory::SetPointBudget(std::size_t points)
{
    m_pointBudget = std::max<std::size_t>(points, 2);
}

Connection widgetChartHistory::ConnectHistory(HistorySlot slot)
{
    return m_answered.Connect(std::move(slot));
}

Connection widgetChartHistory::ConnectAnswer(AnswerSlot slot)
{
    return m_answeredWhole.Connect(std::move(slot));
}

Result widgetChartHistory::OnLastStop()
{
    CancelHistory();
    return widgetChart::OnLastStop();
}

} // namespace Nodes
