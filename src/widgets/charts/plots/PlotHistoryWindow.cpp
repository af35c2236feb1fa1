// How the operator moves the window of a plot with history.
#include "widgets/charts/multiaxis/AxisGestures.h"
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

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

const QwtAxisId timeAxis(QwtAxis::xBottom);

constexpr int following = 0;
constexpr int back = -1;
constexpr int forth = 1;

constexpr int restAfterMove = 250; // ms
constexpr double zoomStep = 0.2;   // logarithm of a notch of a wheel, nearly

} // namespace

Nodes::widgetChartAxis *PlotHistory::getXAxis() const
{
    const Nodes::widgetChartGroup *group = this->group();
    const Nodes::NodesContainer axes = group ? group->GetXAxes() : Nodes::NodesContainer();
    return axes.empty() ? nullptr : dynamic_cast<Nodes::widgetChartAxis *>(axes.begin()->GetNode());
}

void PlotHistory::setAxes(const Nodes::NodesContainer &yAxes, const Nodes::NodesContainer &xAxes)
{
    Plot::setAxes(yAxes, xAxes);
    auto *gestures = findChild<AxisGestures *>(QString(), Qt::FindDirectChildrenOnly);
    if (!gestures)
        return;
    gestures->setEnabled(timeAxis.pos, !hasNoArchive() && isAtWork());
    connect(gestures, &AxisGestures::axisTaken, this, &PlotHistory::onAxisTaken,
            Qt::UniqueConnection);
    connect(gestures, &AxisGestures::axisMoved, this, &PlotHistory::onAxisMoved,
            Qt::UniqueConnection);
    connect(gestures, &AxisGestures::axisReleased, this, &PlotHistory::onAxisReleased,
            Qt::UniqueConnection);
}

void PlotHistory::onAxisTaken(QwtAxisId axis)
{
    if (axis == timeAxis)
        m_taken = window();
}

// Dragging leaves the present, zooming keeps to it what follows it.
void PlotHistory::onAxisMoved(QwtAxisId axis, double from, double to)
{
    if (axis != timeAxis)
        return;
    const auto *gestures = qobject_cast<AxisGestures *>(sender());
    const bool isDragged = gestures && gestures->isDragging();
    if (!isDragged)
        zoomWindow(from, to);
    else if (tracking())
        plotCanvas()->setTracking(false);
    const QwtInterval shown = window();
    emit axisScaleChanged(timeAxis, shown.minValue(), shown.maxValue(), 0);
    m_span.reset();
    m_scheduled.start(restAfterMove); // each movement puts it off
}

// By steps that can be read, which fine wheels and touch pads add up to.
void PlotHistory::zoomWindow(double from, double to)
{
    const double before = m_taken.width();
    const double factor = (to - from) / before;
    m_zoom *= factor;
    Nodes::widgetChartAxis *axis = getXAxis();
    const bool isStep = std::abs(std::log(m_zoom)) > zoomStep && axis;
    const auto length = isStep ? AxisLength::stepped(before, m_zoom > 1, *axis) : std::nullopt;
    if (isStep)
        m_zoom = 1;
    double lower = m_taken.minValue();
    double upper = m_taken.maxValue();
    if (length && tracking()) {
        lower = upper - Nodes::widgetChartAxis::Milliseconds(length->count, length->unit);
    } else if (length) {
        const double pivot = (from - lower * factor) / (1 - factor);
        const double wide = Nodes::widgetChartAxis::Milliseconds(length->count, length->unit);
        lower = pivot - (pivot - lower) * wide / before;
        const double latest = std::max(m_taken.maxValue(), ChartTime::now()); // no future
        upper = std::min(lower + wide, latest);
        lower = upper - wide;
    }
    setWindow(lower, upper);
    if (length) {
        axis->SetRangeLength(length->count);
        axis->SetRangeUnit(length->unit);
        plotCanvas()->updateLenghtXTitle();
    }
    replot();
}

void PlotHistory::onAxisReleased(QwtAxisId axis)
{
    if (axis == timeAxis)
        plotCanvas()->setTracking(true);
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
    // A narrower window has its points already, unless they stand for several samples each.
    if (wide > shown.width() || m_isAggregated)
        (void)getHistory(ChartTime::toUnsigned(from - Margin * wide),
                         ChartTime::toUnsigned(to + Margin * wide));
}

// A signal that seldom changes does not hold the window back.
void PlotHistory::onClock()
{
    if (!isAtWork() || !tracking() || !isVisible())
        return;
    const QwtInterval shown = window();
    const double pixel = shown.width() / qMax(1, plotCanvas()->width());
    const double now = ChartTime::now();
    if (now - shown.maxValue() < pixel)
        return; // values move it already, and nothing else would be seen
    follow(now);
    const QList<ISerie *> all = series();
    for (ISerie *serie : all)
        trim(*serie);
    scheduleReplot();
}

} // namespace Widgets
