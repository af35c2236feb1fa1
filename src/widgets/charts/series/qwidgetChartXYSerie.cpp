#include "widgets/charts/series/qwidgetChartXYSerie.h"

#include "widgets/charts/axes/AxisPlaces.h"
#include "widgets/charts/series/SeriePlotFlag.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartXYSerie.h"
#include "nodes/signals/BasicSignal.h"

#include <QLoggingCategory>
#include <QPainter>
#include <qwt_plot.h>

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

Q_LOGGING_CATEGORY(logCharts, "widgets.charts")

constexpr double arrowDistance = 90; // pixels of the line from one arrow to the next
constexpr double arrowLength = 9;
constexpr double arrowHalf = 4;
constexpr double newestRadius = 5;

bool isFinite(const QPointF &point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

} // namespace

qwidgetChartXYSerie::qwidgetChartXYSerie(Nodes::widgetChartXYSerie *node, QObject *parent)
    : qwidgetChartBasicSerie(node, parent),
      m_live([this](std::vector<Value> values) { onLive(std::move(values)); })
{
    m_sync.setSingleShot(true);
    m_sync.setInterval(0);
    connect(&m_sync, &QTimer::timeout, this, &qwidgetChartXYSerie::sync);
    qwidgetChartXYSerie::onUpdateProperties();
}

qwidgetChartXYSerie::~qwidgetChartXYSerie() = default;

Nodes::widgetChartXYSerie *qwidgetChartXYSerie::xyNode() const
{
    return dynamic_cast<Nodes::widgetChartXYSerie *>(getNode());
}

void qwidgetChartXYSerie::updateArchPoints(const std::vector<Nodes::SignalHistoryResponse> &)
{
    qCWarning(logCharts, "Внимание, функция не реализована!");
}

void qwidgetChartXYSerie::updateHistory(const std::vector<Nodes::SignalHistoryResponse> &answer)
{
    const Nodes::widgetChartXYSerie *node = xyNode();
    if (!node)
        return;
    const Nodes::archiverSourceConnector *sourceX = node->GetSourceX();
    const Nodes::BasicNode *signalX = sourceX ? sourceX->GetSource() : nullptr;
    using SeriePoints::Edge;
    if (signalX)
        m_pairing.addX(SeriePoints::edgeOf(answer, signalX->GetId(), Edge::Last));
    if (const unsigned long signalY = archivedSignal())
        m_pairing.addY(SeriePoints::edgeOf(answer, signalY, Edge::Last));
    sync();
}

void qwidgetChartXYSerie::setFollowing(bool on)
{
    m_xConnection.Disconnect();
    m_yConnection.Disconnect();
    const Nodes::widgetChartXYSerie *node = xyNode();
    if (!on || !node || !isLive())
        return;
    const auto into = [inlet = m_live.inlet()](bool isX) {
        return [inlet, isX](const std::vector<Nodes::SignalValue> &values) {
            for (const Nodes::SignalValue &value : values)
                inlet({isX, value});
        };
    };
    m_xConnection = node->ConnectValuesX(into(true));
    m_yConnection = node->ConnectValues(into(false));
}

void qwidgetChartXYSerie::onLive(std::vector<Value> values)
{
    std::vector<Nodes::SignalValue> x;
    std::vector<Nodes::SignalValue> y;
    for (Value &value : values)
        (value.isX ? x : y).push_back(std::move(value.value));
    onUpdateValues(x, y);
}

void qwidgetChartXYSerie::onUpdateValues(const std::vector<Nodes::SignalValue> &xValues,
                                         const std::vector<Nodes::SignalValue> &yValues)
{
    const auto pointOf = [](const Nodes::SignalValue &value) {
        return SeriePoints::ofValue(ChartTime::toX(value.GetSourceTime()), value);
    };
    for (const Nodes::SignalValue &value : xValues)
        m_pairing.addX(pointOf(value));
    for (const Nodes::SignalValue &value : yValues)
        m_pairing.addY(pointOf(value));
    scheduleSync();
}

void qwidgetChartXYSerie::appendPoint(double x, const Nodes::SignalValue &value)
{
    m_pairing.addY(SeriePoints::ofValue(x, value));
    scheduleSync();
}

void qwidgetChartXYSerie::sketch(const QwtInterval &x, const QwtInterval &y)
{
    constexpr int count = 160;
    constexpr double turn = 0.07; // radians from one point to the next
    m_pairing.clear();
    for (int i = 0; i < count; ++i) {
        const double reach = 0.4 - 0.15 * i / count;
        const double angle = turn * i + getNumber();
        const auto at = [reach](const QwtInterval &range, double part) {
            return (range.minValue() + range.maxValue()) / 2 + range.width() * reach * part;
        };
        m_pairing.addX({double(i), at(x, std::cos(angle)), Nodes::Quality::Good});
        m_pairing.addY({double(i), at(y, std::sin(angle)), Nodes::Quality::Good});
    }
    sync();
}

void qwidgetChartXYSerie::scheduleSync()
{
    if (!m_sync.isActive())
        m_sync.start();
}

void qwidgetChartXYSerie::sync()
{
    m_sync.stop();
    CurveData &drawn = *points();
    drawn.clear();
    drawn.reserve(m_pairing.pairs().size());
    for (const XYPairing::Pair &pair : m_pairing.pairs())
        drawn.append({pair.x, double(getOffsetY()) + pair.y}, pair.quality);
    emit informationChaged();
}

void qwidgetChartXYSerie::onUpdateProperties()
{
    if (const Nodes::widgetChartXYSerie *node = xyNode())
        m_pairing.setTolerance(node->GetTolerance());
    qwidgetChartBasicSerie::onUpdateProperties();
    sync();
}

void qwidgetChartXYSerie::takeAxes(const Nodes::widgetChartBasicSerie &node)
{
    const auto *group = dynamic_cast<Nodes::widgetChartGroup *>(node.GetParent());
    const Nodes::widgetChartXYSerie *own = xyNode();
    const QwtAxisId xAxis = AxisPlaces::idOf(group, own ? own->GetAxisX() : nullptr, true);
    const QwtAxisId yAxis = AxisPlaces::idOf(group, node.GetAxisY(), false);
    setAxes(xAxis, yAxis);
    GetFlag()->setAxes(xAxis, yAxis);
}

// The newest point is marked by itself; its values stand in the legend.
void qwidgetChartXYSerie::updateLabel(const QPointF &)
{
    GetFlag()->setText(QString(), QString());
}

QPointF qwidgetChartXYSerie::lastPoint() const
{
    return points()->last();
}

void qwidgetChartXYSerie::trimLeft(double time)
{
    m_pairing.trimLeft(time);
    scheduleSync();
}

void qwidgetChartXYSerie::clearPoints()
{
    m_pairing.clear();
    sync();
}

std::size_t qwidgetChartXYSerie::pointCount() const
{
    return points()->size();
}

// Its X axis is none of time.
double qwidgetChartXYSerie::heldUntil() const
{
    return points()->last().x();
}

void qwidgetChartXYSerie::drawSeries(QPainter *painter, const QwtScaleMap &xMap,
                                     const QwtScaleMap &yMap, const QRectF &canvas, int from,
                                     int to) const
{
    qwidgetChartBasicSerie::drawSeries(painter, xMap, yMap, canvas, from, to);
    const QwtScaleMap x = adapted(xAxis(), xMap);
    const QwtScaleMap y = adapted(yAxis(), yMap);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (style() == Lines || style() == Steps)
        drawArrows(*painter, x, y, canvas);
    drawNewest(*painter, x, y);
    painter->restore();
}

void qwidgetChartXYSerie::drawArrows(QPainter &painter, const QwtScaleMap &xMap,
                                     const QwtScaleMap &yMap, const QRectF &canvas) const
{
    const CurveData &held = *points();
    painter.setPen(Qt::NoPen);
    painter.setBrush(getColor());
    double walked = 0;
    for (std::size_t i = 1; i < held.size(); ++i) {
        if (!held.isDrawn(i) || !held.isDrawn(i - 1))
            continue;
        const QPointF a(xMap.transform(held.sample(i - 1).x()),
                        yMap.transform(held.sample(i - 1).y()));
        const QPointF b(xMap.transform(held.sample(i).x()), yMap.transform(held.sample(i).y()));
        const double length = std::hypot(b.x() - a.x(), b.y() - a.y());
        walked += length;
        if (walked < arrowDistance || length < 1)
            continue;
        walked = 0;
        const QPointF along = (b - a) / length;
        const QPointF across(-along.y(), along.x());
        const QPointF tip = (a + b) / 2 + along * (arrowLength / 2);
        const QPointF base = tip - along * arrowLength;
        if (canvas.contains(tip))
            painter.drawPolygon(
                QPolygonF({tip, base + across * arrowHalf, base - across * arrowHalf}));
    }
}

void qwidgetChartXYSerie::drawNewest(QPainter &painter, const QwtScaleMap &xMap,
                                     const QwtScaleMap &yMap) const
{
    const QPointF last = points()->last();
    if (points()->size() == 0 || !isFinite(last))
        return;
    painter.setPen(QPen(QColor(0x20, 0x26, 0x2c), 1.5));
    painter.setBrush(getColor());
    painter.drawEllipse(QPointF(xMap.transform(last.x()), yMap.transform(last.y())), newestRadius,
                        newestRadius);
}

} // namespace Widgets
