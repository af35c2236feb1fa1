#include "widgets/charts/series/qwidgetChartCorridorSerie.h"

#include "widgets/charts/axes/AxisPlaces.h"
#include "widgets/charts/multiaxis/MultiAxisPlot.h"
#include "widgets/charts/series/SerieColumn.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/charts/widgetChartCorridorSerie.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/signals/BasicSignal.h"
#include "utils/convert/ValueConversions.h"

#include <qwt_symbol.h>

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

constexpr double frontZ = 2.0;

using Node = Nodes::widgetChartCorridorSerie;

bool isKnown(const TubeSample &sample)
{
    return std::isfinite(sample.lower) && std::isfinite(sample.upper);
}

unsigned long idOf(const Nodes::BasicNode *signal)
{
    return signal ? signal->GetId() : 0;
}

} // namespace

qwidgetChartCorridorSerie::qwidgetChartCorridorSerie(Node *node, QObject *parent)
    : ISerie(node, parent),
      m_live([this](std::vector<Value> values) { onEdges(std::move(values)); })
{
    setStyle(QwtPlotIntervalCurve::Tube);
    setPaintAttribute(QwtPlotIntervalCurve::ClipPolygons, true);
    setData(new IntervalSeriesData);
    setItemAttribute(QwtPlotItem::AutoScale, true);
    m_middle.setItemAttribute(QwtPlotItem::AutoScale, true);
    m_sync.setSingleShot(true);
    m_sync.setInterval(0);
    connect(&m_sync, &QTimer::timeout, this, &qwidgetChartCorridorSerie::sync);
    if (node)
        qwidgetChartCorridorSerie::setVisible(node->isVisible());
    qwidgetChartCorridorSerie::onUpdateProperties();
}

qwidgetChartCorridorSerie::~qwidgetChartCorridorSerie() = default;

Node *qwidgetChartCorridorSerie::corridorNode() const
{
    return dynamic_cast<Node *>(getNode());
}

bool qwidgetChartCorridorSerie::hasEdges() const
{
    const Node *node = corridorNode();
    return node && node->GetSignalMin() && node->GetSignalMax();
}

const IntervalSeriesData &qwidgetChartCorridorSerie::tube() const
{
    return *static_cast<const IntervalSeriesData *>(data());
}

double qwidgetChartCorridorSerie::sliceLength() const
{
    return hasEdges() ? 0 : m_slices.longest();
}

void qwidgetChartCorridorSerie::attachToPlot(QwtPlot *plot)
{
    if (!plot)
        return;
    attach(plot);
    m_middle.attach(plot);
    setZOrder(frontZ);
}

void qwidgetChartCorridorSerie::onUpdateProperties()
{
    const Node *node = corridorNode();
    if (!node)
        return;
    takeNode();
    m_slices.setWidth(node->GetSlice());
    m_middle.setPen(QPen(getColor(), node->GetThickness()));
    if (const QwtSymbol *drawn = m_middle.symbol())
        setSymbol(drawn->style(), drawn->size());
    m_middle.setTitle(QString::fromStdString(node->GetText()));
    setTitle(m_middle.title());
    const QColor fill = Utils::NColorToQColor(node->GetFillColor());
    setBrush(fill);
    QColor edge = getColor();
    edge.setAlpha(std::max(fill.alpha(), 160)); // the edges are told from the grid
    setPen(QPen(edge, 1));
    const auto *group = dynamic_cast<Nodes::widgetChartGroup *>(node->GetParent());
    const QwtAxisId yAxis = AxisPlaces::idOf(group, node->GetAxisY(), false);
    setAxes(QwtAxis::xBottom, yAxis);
    m_middle.setAxes(QwtAxis::xBottom, yAxis);
    sync();
    if (plot())
        plot()->replot();
    emit propertyChanged();
}

void qwidgetChartCorridorSerie::updateArchPoints(
    const std::vector<Nodes::SignalHistoryResponse> &answer)
{
    const Nodes::archiverSourceConnector *source = getArchiverSource();
    const unsigned long own = idOf(source ? source->GetSource() : nullptr);
    const Node *node = corridorNode();
    if (node && hasEdges()) {
        using SeriePoints::Edge;
        m_edges.add(SeriePoints::edgeOf(answer, idOf(node->GetSignalMin()), Edge::Lower),
                    SeriePoints::edgeOf(answer, idOf(node->GetSignalMax()), Edge::Upper));
        for (const SeriePoint &point :
             own ? SeriePoints::ofAnswer(answer, own, ChartTime::now()) : std::vector<SeriePoint>())
            m_middle.points()->append({point.x, double(getOffsetY()) + point.y}, point.quality);
        m_middle.points()->sort();
    } else if (own) {
        m_slices.add(answer, own);
    }
    sync();
}

void qwidgetChartCorridorSerie::setFollowing(bool on)
{
    m_lowerConnection.Disconnect();
    m_upperConnection.Disconnect();
    const Node *node = corridorNode();
    if (!on || !node || !hasEdges() || !isLive())
        return;
    const auto into = [inlet = m_live.inlet()](bool isUpper) {
        return [inlet, isUpper](const std::vector<Nodes::SignalValue> &values) {
            for (const Nodes::SignalValue &value : values)
                inlet({isUpper, value});
        };
    };
    m_lowerConnection = node->ConnectValuesMin(into(false));
    m_upperConnection = node->ConnectValuesMax(into(true));
}

void qwidgetChartCorridorSerie::onEdges(std::vector<Value> values)
{
    for (const Value &one : values) {
        const double x = ChartTime::toX(one.value.GetSourceTime());
        const SeriePoint point = SeriePoints::ofValue(x, one.value);
        if (one.isUpper)
            m_edges.addUpper(point);
        else
            m_edges.addLower(point);
    }
    scheduleSync();
}

void qwidgetChartCorridorSerie::appendPoint(double x, const Nodes::SignalValue &value)
{
    const SeriePoint point = SeriePoints::ofValue(x, value);
    if (hasEdges()) {
        m_middle.points()->append({x, double(getOffsetY()) + point.y}, point.quality);
        if (!m_middle.points()->isSorted())
            m_middle.points()->sort();
        emit informationChaged();
        return;
    }
    m_slices.add(point);
    scheduleSync();
}

void qwidgetChartCorridorSerie::scheduleSync()
{
    if (!m_sync.isActive())
        m_sync.start();
}

void qwidgetChartCorridorSerie::sync()
{
    m_sync.stop();
    m_samples = hasEdges() ? m_edges.samples() : m_slices.samples();
    auto *tube = static_cast<IntervalSeriesData *>(data());
    tube->clear();
    const double offset = getOffsetY();
    for (const TubeSample &sample : m_samples)
        tube->append(isKnown(sample)
                         ? QwtIntervalSample(sample.x, sample.lower + offset, sample.upper + offset)
                         : QwtIntervalSample(sample.x, QwtInterval()));
    if (!hasEdges())
        updateMiddleSerie();
    emit informationChaged();
}

void qwidgetChartCorridorSerie::sketch(double halfWidth)
{
    sync();
    const CurveData &line = *m_middle.points();
    std::vector<SeriePoint> lower;
    std::vector<SeriePoint> upper;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const double y = line.sample(i).y() - double(getOffsetY());
        lower.push_back({line.sample(i).x(), y - halfWidth, Nodes::Quality::Good});
        upper.push_back({line.sample(i).x(), y + halfWidth, Nodes::Quality::Good});
    }
    m_edges.clear();
    m_edges.add(lower, upper);
    sync();
}

void qwidgetChartCorridorSerie::updateMiddleSerie()
{
    CurveData &line = *m_middle.points();
    line.clear();
    line.reserve(m_samples.size());
    for (const TubeSample &sample : m_samples)
        line.append({sample.x, double(getOffsetY()) + sample.middle}, sample.quality);
}

void qwidgetChartCorridorSerie::updateLabel(const QPointF &)
{
    // The legend tells its values; a flag would hide the tube.
}

void qwidgetChartCorridorSerie::setSymbol(int type, const QSize &size)
{
    m_middle.setSymbol(
        new QwtSymbol(QwtSymbol::Style(type), QBrush(Qt::white), m_middle.pen(), size));
}

void qwidgetChartCorridorSerie::setZOrder(double z)
{
    setZ(z);
    m_middle.setZ(z);
}

void qwidgetChartCorridorSerie::setVisible(bool isVisible)
{
    QwtPlotIntervalCurve::setVisible(isVisible);
    m_middle.setVisible(isVisible);
    emit informationChaged();
}

// The tube of the library knows no gaps: each run of known samples is a tube of its own.
void qwidgetChartCorridorSerie::drawSeries(QPainter *painter, const QwtScaleMap &xMap,
                                           const QwtScaleMap &yMap, const QRectF &canvas, int from,
                                           int to) const
{
    const int last = (to < 0 ? int(dataSize()) : to + 1) - 1;
    int begin = -1;
    for (int i = std::max(from, 0); i <= last + 1; ++i) {
        const bool isInRun = i <= last && sample(i).interval.isValid();
        if (isInRun && begin < 0)
            begin = i;
        if (!isInRun && begin >= 0) {
            drawRun(painter, xMap, yMap, canvas, begin, i - 1);
            begin = -1;
        }
    }
}

void qwidgetChartCorridorSerie::drawRun(QPainter *painter, const QwtScaleMap &xMap,
                                        const QwtScaleMap &yMap, const QRectF &canvas, int from,
                                        int to) const
{
    if (to > from) {
        MultiAxisItem<QwtPlotIntervalCurve>::drawSeries(painter, xMap, yMap, canvas, from, to);
        return;
    }
    // One sample between two gaps has no width: its height is still to be seen.
    const QwtScaleMap y = adapted(yAxis(), yMap);
    const double x = adapted(xAxis(), xMap).transform(sample(from).value);
    painter->save();
    painter->setPen(QPen(pen().color(), 3));
    painter->drawLine(QPointF(x, y.transform(sample(from).interval.minValue())),
                      QPointF(x, y.transform(sample(from).interval.maxValue())));
    painter->restore();
}

QVariant qwidgetChartCorridorSerie::getData(int column, int role) const
{
    const bool isCursor = SerieColumn(column) == SerieColumn::CursorValue;
    const auto at = isCursor && cursor() ? sampleAt(*cursor()) : std::nullopt;
    if (role != Qt::ToolTipRole || !at || !isKnown(*at))
        return ISerie::getData(column, role);
    return tr("%1\nМинимум: %2\nМаксимум: %3")
        .arg(ISerie::getData(column, role).toString(), textOf(Nodes::SignalValue(at->lower)),
             textOf(Nodes::SignalValue(at->upper)));
}

QPointF qwidgetChartCorridorSerie::lastPoint() const
{
    const QPointF middle = m_middle.points()->last();
    return m_samples.empty() || middle.x() >= m_samples.back().x
               ? middle
               : QPointF(m_samples.back().x, m_samples.back().middle);
}

void qwidgetChartCorridorSerie::trimLeft(double x)
{
    m_slices.trimLeft(x);
    m_edges.trimLeft(x);
    const std::size_t first = m_middle.points()->indexAt(x);
    if (hasEdges() && first > 1)
        m_middle.points()->trimFront(first - 1);
    scheduleSync();
}

void qwidgetChartCorridorSerie::clearPoints()
{
    m_slices.clear();
    m_edges.clear();
    m_middle.points()->clear();
    sync();
}

std::size_t qwidgetChartCorridorSerie::pointCount() const
{
    return std::max(m_middle.points()->size(), m_samples.size());
}

std::optional<TubeSample> qwidgetChartCorridorSerie::sampleAt(double x) const
{
    if (m_samples.empty())
        return std::nullopt;
    auto next = std::lower_bound(m_samples.begin(), m_samples.end(), x,
                                 [](const TubeSample &sample, double at) { return sample.x < at; });
    if (next == m_samples.end() ||
        (next != m_samples.begin() && x - std::prev(next)->x <= next->x - x))
        --next;
    return *next;
}

std::optional<Nodes::SignalValue> qwidgetChartCorridorSerie::valueAt(double x) const
{
    const CurveData &line = *m_middle.points();
    if (line.size() == 0)
        return std::nullopt;
    std::size_t i = line.indexAt(x);
    if (i == line.size() || (i > 0 && x - line.sample(i - 1).x() <= line.sample(i).x() - x))
        --i;
    Nodes::SignalValue value(line.sample(i).y() - double(getOffsetY()));
    value.SetQuality(line.isDrawn(i) ? line.quality(i) : Nodes::Quality::Bad);
    value.SetTimes(Nodes::Timestamp(ChartTime::toUtc(line.sample(i).x())) * 1000, 0);
    return value;
}

std::optional<std::pair<double, double>> qwidgetChartCorridorSerie::visibleRange() const
{
    const auto *shown = dynamic_cast<const MultiAxisPlot *>(plot());
    const QwtInterval view = shown ? shown->axisInterval(xAxis()) : QwtInterval();
    std::optional<std::pair<double, double>> range;
    for (const TubeSample &sample : m_samples) {
        if (!isKnown(sample) || !view.contains(sample.x))
            continue;
        range = range ? std::pair(std::min(range->first, sample.lower),
                                  std::max(range->second, sample.upper))
                      : std::pair(sample.lower, sample.upper);
    }
    return range;
}

} // namespace Widgets
