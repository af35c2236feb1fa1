#pragma once

#include "widgets/charts/elements/qwidgetChartBasic.h"

#include <vector>

namespace Nodes {
class SignalHistoryResponse;
class widgetChartHistory;
} // namespace Nodes

namespace Widgets {

/// Trend of a Nodes::widgetChartHistory: live values behind what the archive holds. GUI thread.
class WIDGETS_EXPORT qwidgetChartHistory : public qwidgetChartBasic
{
    Q_OBJECT

public:
    using Node = Nodes::widgetChartHistory;

    qwidgetChartHistory(Nodes::widgetChartHistory *node, QWidget *parent,
                        const SceneContextPtr &context = SceneContext::process());

    /// Ends of the time axis, milliseconds of local time.
    void getCurrentInterval(unsigned long long &from, unsigned long long &to) const;
    /// Asks, as the plot does, and returns what was answered; nothing where the plot does not wait
    /// for the answer: it is hidden, or the request was refused.
    std::vector<Nodes::SignalHistoryResponse> getHistory(unsigned long long from,
                                                         unsigned long long to);
};

} // namespace Widgets
