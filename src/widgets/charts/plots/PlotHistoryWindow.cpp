// How the operator moves the window of a plot with history.
#include "widgets/charts/plots/AxisLength.h"
#include "widgets/charts/plots/ChartGroupManager.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/plots/PlotHistory.h"
#include "widgets/charts/plots/PlotPanner.h"
#include "widgets/charts/plots/WaitBox.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/SignalHistoryResponse.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/model/NodesContainer.h"

#include <cmath>

namespace Widgets {

namespace {

const QwtAxisId timeAxis(QwtAxis::xBottom);

constexpr int following = 0;
constexpr int back = -1;
constexpr int forth = 1;

} // namespace

Nodes::widgetChartAxis *PlotHistory::getXAxis() const
{
    const Nodes::widgetChartGroup *group = this->group();
    const Nodes::NodesContainer axes = group ? group->GetXAxes() : Nodes::NodesContainer();
    return axes.empty() ? nullptr : dynamic_cast<Nodes::widgetChartAxis *>(axes.begin()->GetNode());
}

void PlotHistory::getLastHistory(bool isEnabled, int direction)
{
    if (hasNoArchive() || !isEnabled || !isAtWork())
        return;
    const QwtInterval window = this->window();
    if (direction == following) {
        const double from = window.minValue() - Margin * window.width();
        (void)getHistory(ChartTime::toUnsigned(from), 0);
        return;
    }
    if (direction != back && direction != forth)
        return;
    const double lower =
        direction == forth ? window.maxValue() : window.minValue() - window.width();
    const double upper = lower + window.width();
    setWindow(lower, upper);
    replot();
    plotCanvas()->setTracking(false);
    schedule(Span(ChartTime::toUnsigned(lower), ChartTime::toUnsigned(upper)));
}

void PlotHistory::onTrackingChanged(bool on)
{
    getLastHistory(on, following);
}

void PlotHistory::onActionPeriodPrev()
{
    getLastHistory(true, back);
}

void PlotHistory::onActionPeriodNext()
{
    getLastHistory(true, forth);
}

void PlotHistory::onPanned()
{
    Plot::onPanned();
    schedule({});
}

void PlotHistory::updateGroup()
{
    deletePanner();
    Plot::updateGroup();
    bool hasNoArchive = false;
    const QList<ISerie *> all = series();
    for (const ISerie *serie : all)
        hasNoArchive = hasNoArchive || !serie->hasArchiverSource();
    setNoArchive(hasNoArchive);
    HandleConnections(false);
    if (hasNoArchive)
        return;
    createPanner();
    if (isAtWork())
        schedule({});
}

void PlotHistory::setXAxisParams(unsigned long long from, unsigned long long to, int length,
                                 Nodes::widgetChartAxis::enRangeUnit unit)
{
    setWindow(double(from), double(to));
    if (Nodes::widgetChartAxis *axis = getXAxis()) {
        axis->SetRangeLength(length);
        axis->SetRangeUnit(unit);
    }
    plotCanvas()->updateLenghtXTitle();
    replot();
}

void PlotHistory::onActionLengthX()
{
    Nodes::widgetChartAxis *axis = getXAxis();
    if (!axis)
        return;
    const QPointer<PlotHistory> alive(this);
    const auto chosen = AxisLength::ask(*axis);
    if (chosen && alive)
        setLength(chosen->count, chosen->unit);
}

void PlotHistory::setLength(int length, Nodes::widgetChartAxis::enRangeUnit unit)
{
    const double wide = Nodes::widgetChartAxis::Milliseconds(length, unit);
    const QwtInterval shown = window();
    double from = 0;
    double to = 0;
    if (tracking()) {
        to = std::floor(ChartTime::now() / 1000) * 1000;
        from = to - wide;
    } else {
        const double centre =
            double(ChartTime::toUnsigned((shown.minValue() + shown.maxValue()) / 2));
        to = centre + wide / 2;
        from = centre - wide / 2;
    }
    setXAxisParams(ChartTime::toUnsigned(from), ChartTime::toUnsigned(to), length, unit);
    if (wide > shown.width() || m_isAggregated)
        (void)getHistory(ChartTime::toUnsigned(from - Margin * wide),
                         ChartTime::toUnsigned(to + Margin * wide));
}

} // namespace Widgets
