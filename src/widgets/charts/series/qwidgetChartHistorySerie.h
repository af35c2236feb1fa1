#pragma once

#include "widgets/charts/series/qwidgetChartBasicSerie.h"

namespace Nodes {
class widgetChartHistorySerie;
}

namespace Widgets {

/// A line over time. One with a shift shows what its signal was that much earlier: dashed, from
/// the archive only. GUI thread.
class WIDGETS_EXPORT qwidgetChartHistorySerie : public qwidgetChartBasicSerie
{
    Q_OBJECT

public:
    qwidgetChartHistorySerie(Nodes::widgetChartHistorySerie *node, QObject *parent);

    bool isLive() const override;
    void onUpdateProperties() override;
    void updateArchPoints(const std::vector<Nodes::SignalHistoryResponse> &answer) override;

private:
    /// Milliseconds.
    double shift() const;
};

} // namespace Widgets
