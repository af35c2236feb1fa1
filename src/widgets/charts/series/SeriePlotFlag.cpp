#include "widgets/charts/series/SeriePlotFlag.h"

#include "widgets/charts/multiaxis/MultiAxisPlot.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QToolBar>
#include <qwt_painter.h>
#include <qwt_text.h>

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

constexpr int fontPixels = 12;
constexpr double padding = 3;
constexpr double tip = 5;      // length of the arrow that points at the curve
constexpr double atEdge = 0.9; // part of the canvas behind which a point is of now
constexpr int mostMoves = 64;
const QColor ground(255, 255, 255); // opaque: read over any curve

/// Moved off what is taken: down or, where the canvas ends, up.
QRectF movedFree(QRectF rect, const QVector<QRectF> &taken, const QRectF &canvas)
{
    const double wanted = rect.top();
    bool isUp = false;
    const auto hides = [&rect](const QRectF &other) { return other.intersects(rect); };
    for (int moves = 0; moves < mostMoves && !rect.isEmpty(); ++moves) {
        const auto other = std::find_if(taken.cbegin(), taken.cend(), hides);
        if (other == taken.cend() && (isUp || rect.bottom() <= canvas.bottom()))
            break;
        if (!isUp && rect.bottom() > canvas.bottom()) {
            isUp = true;
            rect.moveTop(wanted);
        } else if (isUp) {
            rect.moveBottom(other->top() - 1);
        } else {
            rect.moveTop(other->bottom() + 1);
        }
    }
    return rect;
}

QFont flagFont()
{
    QFont font;
    font.setPixelSize(fontPixels);
    font.setBold(true);
    return font;
}

/// What is covered by tool bars; nothing on paper, where the canvas has another size.
QVector<QRectF> coveredIn(const QWidget &canvas, const QRectF &drawn)
{
    QVector<QRectF> covered;
    if (drawn.size().toSize() != canvas.contentsRect().size())
        return covered;
    for (const QToolBar *bar :
         canvas.findChildren<QToolBar *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!bar->isHidden())
            covered << QRectF(bar->geometry());
    }
    return covered;
}

} // namespace

qwidgetChartBasicSerie::PlotFlag::PlotFlag(const qwidgetChartBasicSerie &serie) : m_serie(serie)
{
    setLineStyle(QwtPlotMarker::HLine);
}

void qwidgetChartBasicSerie::PlotFlag::setText(const QString &value, const QString &time)
{
    m_value = value;
    m_time = time;
    setLabel(QwtText(QStringList({value, time}).join(QLatin1Char(' ')), QwtText::PlainText));
}

std::optional<QPointF> qwidgetChartBasicSerie::PlotFlag::anchor() const
{
    const CurveData *points = m_serie.points();
    for (std::size_t i = points ? points->size() : 0; i > 0; --i) {
        const QPointF point = points->sample(i - 1);
        if (std::isfinite(point.x()) && std::isfinite(point.y()))
            return point;
    }
    return std::nullopt;
}

QStringList qwidgetChartBasicSerie::PlotFlag::lines(const QRectF &canvas, double x) const
{
    const bool isOld = x < canvas.left() + canvas.width() * atEdge;
    return isOld && !m_time.isEmpty() ? QStringList{m_value, m_time} : QStringList{m_value};
}

QRectF qwidgetChartBasicSerie::PlotFlag::flagRect(const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                                                  const QRectF &canvas) const
{
    const auto point = anchor();
    if (!point)
        return {};
    const QPointF at(xMap.transform(point->x()), yMap.transform(point->y()));
    const QFontMetricsF metrics(flagFont());
    QSizeF size(0, 2 * padding - 2);
    for (const QString &line : lines(canvas, at.x())) {
        size.setWidth(std::max(size.width(), metrics.horizontalAdvance(line) + 2 * padding));
        size.rheight() += metrics.height();
    }
    // To the right of the point while there is room, so that it hides nothing of the curve.
    const bool hasRoom = at.x() + tip + size.width() <= canvas.right();
    const double left = hasRoom ? at.x() + tip : at.x() - tip - size.width();
    return {QPointF(left, at.y() - size.height() / 2), size};
}

QRectF qwidgetChartBasicSerie::PlotFlag::ownRect(const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                                                 const QRectF &canvas) const
{
    const auto point = m_serie.isVisible() ? anchor() : std::nullopt;
    const QRectF rect = point ? flagRect(xMap, yMap, canvas) : QRectF();
    const bool isInside =
        point && canvas.adjusted(-1, -1, 1, 1)
                     .contains(xMap.transform(point->x()), yMap.transform(point->y()));
    if (!isInside)
        return {};
    const double top = std::clamp(rect.top(), canvas.top(),
                                  std::max(canvas.top(), canvas.bottom() - rect.height()));
    return {QPointF(rect.left(), top), rect.size()};
}

QRectF qwidgetChartBasicSerie::PlotFlag::freeRect(const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                                                  const QRectF &canvas) const
{
    const auto *shown = dynamic_cast<const MultiAxisPlot *>(plot());
    QVector<QRectF> taken = coveredIn(*plot()->canvas(), canvas);
    for (const QwtPlotItem *item : plot()->itemList(Rtti)) {
        const auto *serie = dynamic_cast<const qwidgetChartBasicSerie *>(item);
        if (!serie)
            continue;
        const PlotFlag &flag = *serie->GetFlag();
        const bool isOnSide = !shown || flag.yAxis().pos == yAxis().pos;
        QRectF rect = flag.ownRect(
            adapted(flag.xAxis(), xMap),
            isOnSide ? adapted(flag.yAxis(), yMap) : shown->canvasMap(flag.yAxis()), canvas);
        rect = movedFree(rect, taken, canvas);
        if (&flag == this)
            return rect;
        taken << rect;
    }
    return {};
}

void qwidgetChartBasicSerie::PlotFlag::draw(QPainter *painter, const QwtScaleMap &xMap,
                                            const QwtScaleMap &yMap, const QRectF &canvas) const
{
    const QRectF rect = m_value.isEmpty() ? QRectF() : freeRect(xMap, yMap, canvas);
    if (rect.isEmpty())
        return;
    const auto point = anchor();
    const QPointF at(adapted(xAxis(), xMap).transform(point->x()),
                     adapted(yAxis(), yMap).transform(point->y()));
    const QColor color = m_serie.getColorFlag();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(color);
    const double side = rect.left() > at.x() ? rect.left() : rect.right();
    painter->drawLine(at, QPointF(side, rect.center().y()));
    painter->setBrush(ground);
    painter->drawRect(rect);
    painter->fillRect(QRectF(rect.left(), rect.top(), 2, rect.height()), color);
    painter->setFont(flagFont());
    painter->setPen(QColor(0x20, 0x26, 0x2c)); // a light series' own colour would not be read
    painter->drawText(rect.adjusted(padding, 0, -padding + 1, 0), Qt::AlignCenter,
                      lines(canvas, at.x()).join(QLatin1Char('\n')));
    painter->restore();
}

} // namespace Widgets
