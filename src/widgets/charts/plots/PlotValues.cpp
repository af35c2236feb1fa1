// Scales of a plot, and how live values move them.
#include "widgets/charts/axes/AxisRecord.h"
#include "widgets/charts/axes/ToolBar.h"
#include "widgets/charts/multiaxis/AxisGestures.h"
#include "widgets/charts/plots/ChartGroupManager.h"
#include "widgets/charts/plots/LiveFeed.h"
#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/plots/PlotPanner.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/time/ChartTime.h"
#include "widgets/charts/zones/IntervalEditorManager.h"

#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/model/NodesContainer.h"

#include <QSignalBlocker>

#include <cmath>
#include <limits>

namespace Widgets {

namespace {

const QwtAxisId timeAxis(QwtAxis::xBottom);

bool isNumeric(Nodes::enSignalValueType type)
{
    return type >= Nodes::enSignalValueType::Bool && type <= Nodes::enSignalValueType::ULong;
}

} // namespace

void Plot::setAxes(const Nodes::NodesContainer &yAxes, const Nodes::NodesContainer &xAxes)
{
    clearIntervalEditorManagers();
    m_axes.clear();
    m_axes = AxisRecord::make(*this, yAxes, xAxes);
    // Later: what an axis given back does its record decides.
    constexpr auto onceLater = Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection);
    if (auto *gestures = findChild<AxisGestures *>(QString(), Qt::FindDirectChildrenOnly)) {
        for (const auto change : {&AxisGestures::axisTaken, &AxisGestures::axisReleased})
            connect(gestures, change, m_canvas, &PlotCanvas::showAutoScale, onceLater);
    }
    for (const auto &record : m_axes) {
        connect(record.get(), &AxisRecord::scaleDrawChanged, this, &Plot::axisScaleDrawChanged);
        emit axisScaleDrawChanged(record->axis(), axisScaleDraw(record->axis()));
        if (record->axis().isXAxis())
            continue;
        std::unique_ptr<IntervalEditorManager> editors(
            IntervalEditorManager::make(this, record->axis(), record->node(), group()));
        if (!editors)
            continue;
        editors->setEnable(m_canvas->isToolBarVisible());
        m_intervalEditors.push_back(std::move(editors));
    }
    m_nextWindow.reset();
}

QwtAxisId Plot::axisOf(const Nodes::widgetChartAxis *node) const
{
    for (const auto &record : m_axes) {
        if (node && record->node() == node)
            return record->axis();
    }
    return {};
}

QwtInterval Plot::window() const
{
    const QwtInterval taken = axisInterval(timeAxis);
    return m_nextWindow && taken == m_windowBefore ? *m_nextWindow : taken;
}

void Plot::setWindow(double lower, double upper)
{
    if (!std::isfinite(lower) || !std::isfinite(upper) || lower > upper)
        return;
    setAxisScale(timeAxis, lower, upper);
    m_nextWindow = QwtInterval(lower, upper);
    m_windowBefore = axisInterval(timeAxis);
}

void Plot::follow(double x)
{
    const QwtInterval window = this->window();
    if (!tracking() || !(x > window.maxValue()) || (m_panner && m_panner->isDragging()))
        return;
    const double lower = x - window.width();
    emit axisScaleChanged(timeAxis, lower, x, 0);
    setWindow(lower, x);
}

bool Plot::takes(double x, const QwtInterval &window) const
{
    return tracking() || x <= window.maxValue() + Margin * window.width();
}

void Plot::appendPoints(std::vector<Nodes::SignalValue> values, ISerie *serie)
{
    if (!m_manager || !m_manager->has(serie) || serie->getPlotAreaNo() != m_number)
        return;
    const QwtInterval before = window();
    for (const Nodes::SignalValue &value : values) {
        if (!isNumeric(value.GetType()))
            continue;
        const double x = ChartTime::toX(value.GetSourceTime());
        m_feed->keep(serie, x, value);
        if (takes(x, before))
            append(*serie, x, value);
        else
            m_leftOut.emplace(serie, x);
    }
    const QPointF last = serie->lastPoint();
    serie->updateLabel(last);
    if (tracking()) {
        follow(last.x());
        trim(*serie);
    }
    scheduleReplot();
}

// No line leads over what was left out: nobody knows what was there.
void Plot::append(ISerie &serie, double x, const Nodes::SignalValue &value)
{
    const auto leftOut = m_leftOut.find(&serie);
    if (leftOut != m_leftOut.end() && leftOut->second < x) {
        Nodes::SignalValue gap(std::numeric_limits<double>::quiet_NaN());
        gap.SetQuality(Nodes::Quality::Bad);
        serie.appendPoint(leftOut->second, gap);
        m_leftOut.erase(leftOut);
    }
    serie.appendPoint(x, value);
}

void Plot::forgetLeftOut()
{
    m_leftOut.clear();
}

void Plot::trim(ISerie &serie)
{
    const QwtInterval now = window();
    serie.trimLeft(now.minValue() - Margin * now.width());
}

void Plot::moveCanvas(int dx, int dy)
{
    if (m_panner)
        m_panner->pan(dx, dy);
}

void Plot::onPanned()
{
    const QwtInterval now = window();
    emit axisScaleChanged(timeAxis, now.minValue(), now.maxValue(), 0);
    m_canvas->setTracking(false);
    m_canvas->setAutoscale(false);
}

void Plot::onValuesLost() {}

void Plot::onUserChanged()
{
    HandleConnections(true);
    QStringList forbidden;
    const QList<ISerie *> all = series();
    for (ISerie *serie : all) {
        const Nodes::widgetChartBasicSerie *node = serie->getNode();
        if (!node || !node->IsForbidden())
            continue;
        serie->clearPoints();
        forbidden << QString::fromStdString(node->GetText());
    }
    setNote(forbidden.isEmpty()
                ? QString()
                : QStringLiteral("Нет прав на просмотр: ") + forbidden.join(QStringLiteral(", ")));
    HandleConnections(false);
    updateIntervalEditorManagers(); // handles are there for who may write
    scheduleReplot();
    emit userChanged();
}

void Plot::beginTracking()
{
    const QSignalBlocker blocker(m_canvas->tbAxisX());
    m_canvas->setTracking(true);
}

} // namespace Widgets
