#include "widgets/charts/series/qwidgetChartBasicSerie.h"

#include "widgets/charts/axes/AxisPlaces.h"
#include "widgets/charts/multiaxis/MultiAxisPlot.h"
#include "widgets/charts/series/SeriePlotFlag.h"
#include "widgets/charts/series/SeriePoint.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/signals/BasicSignal.h"
#include "utils/convert/ValueConversions.h"

#include <QPainter>
#include <qwt_symbol.h>

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

constexpr double frontZ = 2.0;

using Node = Nodes::widgetChartBasicSerie;

Nodes::Timestamp microseconds(double x)
{
    return Nodes::Timestamp(ChartTime::toUtc(x)) * 1000;
}

} // namespace

qwidgetChartBasicSerie::qwidgetChartBasicSerie(Node *node, QObject *parent)
    : ISerie(node, parent), m_flag(std::make_unique<PlotFlag>(*this))
{
    m_storedOffset = getOffsetY();
    connect(this, &ISerie::offsetYChanged, this, &qwidgetChartBasicSerie::onOffsetChanged);
    setItemAttribute(QwtPlotItem::AutoScale, true);
    setCurveAttribute(QwtPlotCurve::Inverted, true); // a step holds until the next sample
    if (!node)
        return;
    PlotCurve::setTitle(QString::fromStdString(node->GetText()));
    PlotCurve::setVisible(node->isVisible());
    setPen(QPen(getColor(), node->GetThickness()));
}

// The flag refers to the curve and leaves the plot before it.
qwidgetChartBasicSerie::~qwidgetChartBasicSerie()
{
    m_flag.reset();
}

void qwidgetChartBasicSerie::attachToPlot(QwtPlot *plot)
{
    if (!plot)
        return;
    if (const Node *node = getNode())
        takeAxes(*node);
    attach(plot);
    m_flag->attach(plot);
    qwidgetChartBasicSerie::setZOrder(frontZ);
}

void qwidgetChartBasicSerie::takeAxes(const Node &node)
{
    const auto *group = dynamic_cast<Nodes::widgetChartGroup *>(node.GetParent());
    const QwtAxisId yAxis = AxisPlaces::idOf(group, node.GetAxisY(), false);
    setAxes(QwtAxis::xBottom, yAxis);
    m_flag->setAxes(QwtAxis::xBottom, yAxis);
}

QwtPlotCurve::CurveStyle qwidgetChartBasicSerie::styleOf(const Node &node) const
{
    switch (node.GetStyle()) {
    case Node::Sticks:
        return QwtPlotCurve::Sticks;
    case Node::Steps:
        return QwtPlotCurve::Steps;
    case Node::Dots:
        return QwtPlotCurve::Dots;
    case Node::Lines:
        break;
    }
    return QwtPlotCurve::Lines;
}

void qwidgetChartBasicSerie::onUpdateProperties()
{
    const Node *node = getNode();
    if (!node)
        return;
    takeNode();
    QPen pen = PlotCurve::pen();
    pen.setColor(getColor());
    pen.setWidth(node->GetThickness());
    setPen(pen);
    if (const QwtSymbol *drawn = symbol())
        setSymbol(drawn->style(), drawn->size());
    setStyle(styleOf(*node));
    PlotCurve::setTitle(QString::fromStdString(node->GetText()));
    takeAxes(*node);
    if (plot())
        plot()->replot();
    emit propertyChanged();
}

unsigned long qwidgetChartBasicSerie::archivedSignal() const
{
    const Nodes::archiverSourceConnector *source = getArchiverSource();
    const Nodes::BasicNode *signal = source ? source->GetSource() : nullptr;
    return signal ? signal->GetId() : 0;
}

void qwidgetChartBasicSerie::updateArchPoints(
    const std::vector<Nodes::SignalHistoryResponse> &answer)
{
    if (const unsigned long signal = archivedSignal())
        merge(SeriePoints::ofAnswer(answer, signal, ChartTime::now()));
}

void qwidgetChartBasicSerie::append(const SeriePoint &point)
{
    points()->append({point.x, double(getOffsetY()) + drawn(point.y)}, point.quality);
}

void qwidgetChartBasicSerie::onOffsetChanged()
{
    const double by = double(getOffsetY()) - double(m_storedOffset);
    m_storedOffset = getOffsetY();
    const CurveData &held = *points();
    std::vector<SeriePoint> moved;
    moved.reserve(held.size());
    for (std::size_t i = 0; i < held.size(); ++i)
        moved.push_back({held.sample(i).x(), held.sample(i).y() + by, held.quality(i)});
    points()->clear();
    for (const SeriePoint &point : moved)
        points()->append({point.x, point.y}, point.quality);
}

void qwidgetChartBasicSerie::merge(const std::vector<SeriePoint> &added)
{
    for (const SeriePoint &point : added)
        append(point);
    // Live points may stand there already, and an aggregate's may repeat a sample.
    if (!added.empty())
        points()->sort();
    emit informationChaged();
}

void qwidgetChartBasicSerie::replacePoints(const std::vector<SeriePoint> &all)
{
    points()->clear();
    points()->reserve(all.size());
    for (const SeriePoint &point : all)
        append(point);
    emit informationChaged();
}

void qwidgetChartBasicSerie::appendPoint(double x, const Nodes::SignalValue &value)
{
    append(SeriePoints::ofValue(x, value));
    if (!points()->isSorted())
        points()->sort();
    emit informationChaged();
}

QPointF qwidgetChartBasicSerie::lastPoint() const
{
    return points()->last();
}

void qwidgetChartBasicSerie::trimLeft(double x)
{
    const std::size_t first = points()->indexAt(x);
    if (first > 1)
        points()->trimFront(first - 1);
}

void qwidgetChartBasicSerie::clearPoints()
{
    points()->clear();
    emit informationChaged();
}

std::size_t qwidgetChartBasicSerie::pointCount() const
{
    return points()->size();
}

double qwidgetChartBasicSerie::heldUntil() const
{
    const double last = points()->last().x();
    return isLive() ? std::max(last, ChartTime::now()) : last;
}

void qwidgetChartBasicSerie::drawSeries(QPainter *painter, const QwtScaleMap &xMap,
                                        const QwtScaleMap &yMap, const QRectF &canvas, int from,
                                        int to) const
{
    PlotCurve::drawSeries(painter, xMap, yMap, canvas, from, to);
    const CurveData &held = *points();
    const bool isJoined = style() == Lines || style() == Steps;
    if (!isJoined || held.size() == 0 || !held.isDrawn(held.size() - 1))
        return;
    const QwtScaleMap x = adapted(xAxis(), xMap);
    const double y = adapted(yAxis(), yMap).transform(held.last().y());
    const double begin = std::max(x.transform(held.last().x()), canvas.left());
    const double end = std::min(x.transform(heldUntil()), canvas.right());
    if (!(end > begin))
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(PlotCurve::pen());
    painter->drawLine(QPointF(begin, y), QPointF(end, y));
    painter->restore();
}

void qwidgetChartBasicSerie::updateLabel(const QPointF &last)
{
    const bool isKnown = pointCount() > 0 && std::isfinite(last.y());
    const auto value = isKnown ? valueAt(last.x()) : std::nullopt;
    if (value)
        m_flag->setText(textOf(*value), ChartTime::text(last.x(), QStringLiteral("hh:mm:ss")));
    else
        m_flag->setText(QString(), QString());
}

void qwidgetChartBasicSerie::setSymbol(int type, const QSize &size)
{
    setSymbol(new QwtSymbol(QwtSymbol::Style(type), QBrush(Qt::white), PlotCurve::pen(), size));
}

void qwidgetChartBasicSerie::setZOrder(double z)
{
    setZ(z);
    m_flag->setZ(z);
}

void qwidgetChartBasicSerie::raiseFlag()
{
    QwtPlot *flagged = m_flag->plot();
    if (!flagged)
        return;
    m_flag->detach();
    m_flag->attach(flagged);
}

void qwidgetChartBasicSerie::setVisible(bool isVisible)
{
    PlotCurve::setVisible(isVisible);
    m_flag->setVisible(isVisible);
    emit informationChaged();
}

std::optional<Nodes::SignalValue> qwidgetChartBasicSerie::valueAt(double x) const
{
    const CurveData &held = *points();
    if (held.size() == 0 || !held.isSorted())
        return std::nullopt;
    std::size_t i = held.indexAt(x);
    const bool isBehind = i == held.size() || held.sample(i).x() > x;
    if (isBehind && i == 0 && style() == Steps)
        return std::nullopt; // what was before the first sample is not known
    // A step holds until the next sample, a line is read at the nearest one.
    if (i == held.size() ||
        (isBehind && i > 0 &&
         (style() == Steps || x - held.sample(i - 1).x() <= held.sample(i).x() - x)))
        --i;
    Nodes::SignalValue value(held.sample(i).y() - double(getOffsetY()));
    value.SetQuality(held.isDrawn(i) ? held.quality(i) : Nodes::Quality::Bad);
    value.SetTimes(microseconds(held.sample(i).x()), 0);
    return value;
}

std::optional<std::pair<double, double>> qwidgetChartBasicSerie::visibleRange() const
{
    const CurveData &held = *points();
    const auto *shown = dynamic_cast<const MultiAxisPlot *>(plot());
    if (!shown || held.size() == 0)
        return std::nullopt;
    const QwtInterval view = shown->axisInterval(xAxis());
    std::optional<std::pair<double, double>> range;
    const auto extend = [&range](double low, double high) {
        range = range ? std::pair(std::min(range->first, low), std::max(range->second, high))
                      : std::pair(low, high);
    };
    constexpr std::size_t few = 8192;
    const std::size_t first = held.isSorted() ? held.indexAt(view.minValue()) : 0;
    if (!held.isSorted() || held.size() - first <= few) {
        for (std::size_t i = first; i < held.size(); ++i) {
            const QPointF point = held.sample(i);
            if (view.contains(point.x()) && held.isDrawn(i))
                extend(point.y(), point.y());
        }
    } else {
        const CurveLevel &level = held.level(view.width() / few);
        for (std::size_t i = level.indexAt(view.minValue()); i < level.buckets().size(); ++i) {
            const CurveBucket &bucket = level.buckets()[i];
            if (level.xOf(bucket, bucket.firstX) > view.maxValue())
                break;
            extend(bucket.lowY, bucket.highY);
        }
    }
    const double offset = getOffsetY();
    if (range)
        range = std::pair(range->first - offset, range->second - offset);
    return range;
}

} // namespace Widgets
