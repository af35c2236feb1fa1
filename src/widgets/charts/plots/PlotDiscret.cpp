#include "widgets/charts/plots/PlotDiscret.h"

#include "widgets/charts/axes/DiscretScaleEngine.h"
#include "widgets/charts/axes/DiscretValueScaleDraw.h"
#include "widgets/charts/axes/ToolBarChart.h"
#include "widgets/charts/multiaxis/AxisGestures.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/plots/PlotPanner.h"

#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartHistory.h"
#include "nodes/model/NodesContainer.h"

#include <qwt_plot_grid.h>

namespace Widgets {

namespace {

const QwtAxisId firstY(QwtAxis::yLeft);

} // namespace

PlotDiscret::PlotDiscret(Nodes::widgetChartHistory *chart, int number, QWidget *parent)
    : PlotHistory(chart, number, parent)
{
    const PlotCanvas &canvas = *plotCanvas();
    for (QWidget *bar :
         {static_cast<QWidget *>(canvas.tbAxisX()), static_cast<QWidget *>(canvas.tbAxisY()),
          static_cast<QWidget *>(canvas.tbChart())}) {
        if (bar)
            bar->hide();
    }
}

void PlotDiscret::onUpdateProperties()
{
    clearIntervalEditorManagers();
    if (const Nodes::widgetChartGroup *group = this->group()) {
        for (const auto enable : {&QwtPlotGrid::enableX, &QwtPlotGrid::enableY,
                                  &QwtPlotGrid::enableXMin, &QwtPlotGrid::enableYMin})
            (grid()->*enable)(false);
        setAxes(group->GetYAxes(), group->GetXAxes());
    }
    updatePropertyCanvas();
    if (const Nodes::widgetChart *node = chart())
        onSetSymbol(node->GetTypeSymbol());
    setAxisScaleEngine(firstY, new DiscretScaleEngine);
    auto *draw = new DiscretValueScaleDraw(Qt::black);
    draw->setDelegate(m_delegate); // the axes have been made anew, the width is still asked for
    setAxisScaleDraw(firstY, draw);
    emit axisScaleDrawChanged(firstY, draw);
    disablePanningY();
    replot();
}

void PlotDiscret::setAxes(const Nodes::NodesContainer &yAxes, const Nodes::NodesContainer &xAxes)
{
    PlotHistory::setAxes(yAxes, xAxes);
    clearIntervalEditorManagers();
    setAxisAutoScale(firstY, true);
    // No more than the panner does a hand on the scale move the bands.
    if (auto *gestures = findChild<AxisGestures *>(QString(), Qt::FindDirectChildrenOnly))
        gestures->setEnabled(firstY.pos, false);
}

// Its bands are all there is to see: the automatic scale stays.
void PlotDiscret::onPanned()
{
    const QwtInterval now = window();
    emit axisScaleChanged(QwtAxis::xBottom, now.minValue(), now.maxValue(), 0);
    plotCanvas()->setTracking(false);
    QTimer::singleShot(0, this, &PlotHistory::getCurrentHistory);
}

void PlotDiscret::updateGroup()
{
    PlotHistory::updateGroup();
    disablePanningY();
}

void PlotDiscret::disablePanningY()
{
    if (panner())
        panner()->setAxisEnabled(firstY, false);
}

void PlotDiscret::setDelegateAxisScaleDraw(QwtAxisId axis, QwtScaleDraw *draw)
{
    if (!axis.isYAxis())
        return;
    m_delegate = draw;
    auto *own = dynamic_cast<DiscretValueScaleDraw *>(axisScaleDraw(firstY));
    if (!own)
        return;
    own->setDelegate(draw);
    updateLayout();
}

} // namespace Widgets
