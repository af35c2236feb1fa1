#pragma once

#include "widgets/charts/plots/PlotHistory.h"

namespace Widgets {

class DiscretValueScaleDraw;

/// Trend of signals that are on or off, one band each: without tool bars and grid of its own, for
/// who puts it below another plot. The vertical scale shows all bands and cannot be dragged about.
/// GUI thread.
class WIDGETS_EXPORT PlotDiscret : public PlotHistory
{
    Q_OBJECT

public:
    PlotDiscret(Nodes::widgetChartHistory *chart, int number, QWidget *parent);

public slots:
    void onUpdateProperties() override;
    void setAxes(const Nodes::NodesContainer &yAxes, const Nodes::NodesContainer &xAxes) override;
    void onPanned() override;
    void updateGroup() override;
    /// Draw of an axis of another plot, which has to outlive this one or be taken back by null: the
    /// values' scale becomes as wide as that, so that both canvases begin at the same pixel. For a
    /// Y axis only. The other plot's axisScaleDrawChanged() connected to it does all of that.
    void setDelegateAxisScaleDraw(QwtAxisId axis, QwtScaleDraw *draw);

private:
    void disablePanningY();

    QwtScaleDraw *m_delegate = nullptr; // of another plot
};

} // namespace Widgets
