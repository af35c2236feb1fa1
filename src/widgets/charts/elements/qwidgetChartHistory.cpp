#include "widgets/charts/elements/qwidgetChartHistory.h"

#include "widgets/charts/plots/PlotHistory.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/SignalHistoryResponse.h"
#include "nodes/charts/widgetChartHistory.h"

namespace Widgets {

namespace {

constexpr int onlyPlot = 1;

} // namespace

qwidgetChartHistory::qwidgetChartHistory(Nodes::widgetChartHistory *node, QWidget *parent,
                                         const SceneContextPtr &context)
    : qwidgetChartBasic(node, new PlotHistory(node, onlyPlot, nullptr), parent, context)
{
    initialize();
}

void qwidgetChartHistory::getCurrentInterval(unsigned long long &from, unsigned long long &to) const
{
    const QwtInterval window = plot()->window();
    from = ChartTime::toUnsigned(window.minValue());
    to = ChartTime::toUnsigned(window.maxValue());
}

// The answer is merged all the same: the request has emptied the curves.
std::vector<Nodes::SignalHistoryResponse> qwidgetChartHistory::getHistory(unsigned long long from,
                                                                          unsigned long long to)
{
    using Answer = std::vector<Nodes::SignalHistoryResponse>;
    auto *history = qobject_cast<PlotHistory *>(plot());
    if (!history)
        return {};
    const QPointer<PlotHistory> alive(history);
    const auto result = std::make_shared<Answer>(); // outlives the plot, which may go meanwhile
    disconnect(history, &PlotHistory::getHistoryCompleted, history,
               &PlotHistory::onGetHistoryCompleted);
    const QMetaObject::Connection copying = connect(
        history, &PlotHistory::getHistoryCompleted, history, [history, result](Answer answer) {
            *result = answer;
            history->onGetHistoryCompleted(std::move(answer));
        });
    (void)history->getHistory(from, to);
    if (!alive)
        return *result;
    disconnect(copying);
    connect(history, &PlotHistory::getHistoryCompleted, history,
            &PlotHistory::onGetHistoryCompleted);
    return *result;
}

} // namespace Widgets
