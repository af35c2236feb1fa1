#include "widgets/charts/painting/CurvePainter.h"

#include "widgets/charts/painting/ColumnSpans.h"
#include "widgets/charts/painting/LinePaths.h"

#include <QPaintEngine>
#include <QPainter>

#include <type_traits>

namespace Widgets {

namespace {

// More points a column than this are drawn from their extremes.
constexpr double pointsPerColumn = 4;

double penWidth(const QPen &pen, double scale)
{
    return qMax(1.0, pen.isCosmetic() ? pen.widthF() : pen.widthF() * scale);
}

} // namespace

CurvePainter::CurvePainter(QPainter &painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                           const QRectF &canvas)
    : m_painter(painter), m_xMap(xMap), m_yMap(yMap), m_visible(canvas), m_bottom(canvas.bottom())
{
    if (painter.hasClipping())
        m_visible &= painter.clipBoundingRect();
    // A wide pen or a symbol shows a little of what lies outside.
    const double margin = 8;
    m_left = xMap.invTransform(m_visible.left() - margin);
    m_right = xMap.invTransform(m_visible.right() + margin);
    if (m_left > m_right)
        std::swap(m_left, m_right);
}

bool CurvePainter::limitToView(const CurveData &data, std::size_t &from, std::size_t &to) const
{
    if (m_visible.isEmpty() || data.size() == 0)
        return false;
    to = std::min(to, data.size() - 1);
    if (data.isSorted()) {
        const std::size_t first = data.indexAt(m_left);
        from = std::max(from, first > 0 ? first - 1 : 0);
        to = std::min(to, data.indexAt(m_right));
    }
    return from <= to;
}

void CurvePainter::draw(const CurveData &data, const Look &look, std::size_t from, std::size_t to)
{
    if (!limitToView(data, from, to))
        return;
    m_painter.save();
    if (look.style == Style::Dots)
        drawDots(data, look, from, to);
    else if (canFillColumns(data, look.pen))
        drawSpans(data, look, from, to);
    else
        drawPaths(data, look, from, to);
    m_painter.restore();
}

/// Columns can be filled where the painter has pixels, upright ones, blends none, and the line goes
/// from the left to the right.
bool CurvePainter::canFillColumns(const CurveData &data, const QPen &pen) const
{
    const QPaintEngine *engine = m_painter.paintEngine();
    const QTransform &device = m_painter.deviceTransform();
    return engine && engine->type() == QPaintEngine::Raster && data.isSorted() &&
           device.type() <= QTransform::TxScale && device.m11() > 0 &&
           !m_painter.testRenderHint(QPainter::Antialiasing) &&
           pen.brush().style() == Qt::SolidPattern && !m_xMap.isInverting();
}

void CurvePainter::drawSpans(const CurveData &data, const Look &look, std::size_t from,
                             std::size_t to)
{
    const QTransform device = m_painter.deviceTransform();
    const PixelMap x(m_xMap, device.m11(), device.dx());
    const PixelMap y(m_yMap, device.m22(), device.dy());
    const int width = qRound(penWidth(look.pen, device.m11()));
    const double origin = x(0);
    ColumnSpans spans(device.mapRect(m_visible).toAlignedRect(), width,
                      DashPattern(look.pen, width, origin), DashPattern::dotted(width, origin));
    lead(data, look, from, to, x, y, spans);
    spans.paint(m_painter, look.pen.color());
}

void CurvePainter::drawPaths(const CurveData &data, const Look &look, std::size_t from,
                             std::size_t to)
{
    const PixelMap x(m_xMap, 1, 0);
    const PixelMap y(m_yMap, 1, 0);
    const double margin = look.pen.widthF() + 2;
    LinePaths paths(m_visible.adjusted(-margin, -margin, margin, margin));
    lead(data, look, from, to, x, y, paths);
    paths.paint(m_painter, look.pen);
}

template <class Line>
void CurvePainter::lead(const CurveData &data, const Look &look, std::size_t from, std::size_t to,
                        const PixelMap &x, const PixelMap &y, Line &line) const
{
    if (look.style == Style::Sticks) {
        leadSticks(data, look.baseline, from, to, x, y, line);
        return;
    }
    CurveWalk<Line> walk(data, x, y, look.join, line);
    const double columns = qAbs(x(m_right) - x(m_left));
    const bool isDense = data.isSorted() && x.isLinear() && x.unitsPerPixel() > 0 &&
                         double(to - from) > pointsPerColumn * columns;
    if (!isDense) {
        walk.points(from, to);
        return;
    }
    if constexpr (std::is_same_v<Line, ColumnSpans>) {
        if (const CurveLevel *exact = x.isRising() ? data.columns(x.unitsPerPixel()) : nullptr) {
            walk.columns(*exact, m_left, m_right);
            return;
        }
    }
    // Half a column at most: a bucket that lies in two knows the extremes of one of them only.
    walk.level(data.level(x.unitsPerPixel() / 2), m_left, m_right);
}

/// A pair is drawn as two sticks: a point alone between two that are not drawn has none.
template <class Line>
void CurvePainter::leadSticks(const CurveData &data, double baseline, std::size_t from,
                              std::size_t to, const PixelMap &x, const PixelMap &y,
                              Line &line) const
{
    const double base = y(baseline);
    for (std::size_t i = from; i <= to; ++i) {
        const bool isPaired =
            (i > 0 && data.isDrawn(i - 1)) || (i + 1 < data.size() && data.isDrawn(i + 1));
        if (data.isDrawn(i) && isPaired)
            line.stick(x(data.points()[i].x()), base, y(data.points()[i].y()),
                       data.quality(i) != Nodes::Quality::Good);
    }
}

void CurvePainter::drawDots(const CurveData &data, const Look &look, std::size_t from,
                            std::size_t to)
{
    QPolygonF dots;
    QPolygonF doubtful;
    const PixelMap x(m_xMap, 1, 0);
    const PixelMap y(m_yMap, 1, 0);
    for (std::size_t i = from; i <= to; ++i) {
        if (!data.isDrawn(i))
            continue;
        QPolygonF &kind = data.quality(i) == Nodes::Quality::Good ? dots : doubtful;
        const QPointF dot(x(data.points()[i].x()), y(data.points()[i].y()));
        if (m_visible.contains(dot) &&
            (kind.isEmpty() || (kind.last() - dot).manhattanLength() >= 0.5))
            kind.append(dot);
    }
    m_painter.setPen(look.pen);
    m_painter.drawPoints(dots);
    // Hollow: uncertain dots between good ones are told by their shape.
    const double radius = look.pen.widthF() / 2 + 1.5;
    m_painter.setPen(QPen(look.pen.color(), 1));
    m_painter.setBrush(Qt::NoBrush);
    for (const QPointF &dot : qAsConst(doubtful))
        m_painter.drawEllipse(dot, radius, radius);
}

void CurvePainter::markBad(const CurveData &data, const QPen &pen, int row)
{
    constexpr double barHeight = 5;
    constexpr double rowHeight = 7;
    const double bottom = m_bottom - 1 - row * rowHeight;
    m_painter.save();
    m_painter.setPen(QPen(pen.color(), 1));
    double drawnTo = m_visible.left() - 1;
    for (const CurveData::BadStretch &bad : data.badStretches()) {
        if (bad.to < m_left || bad.from > m_right)
            continue;
        const double from = qMax(m_xMap.transform(bad.from), m_visible.left() - 2);
        const double to = qMin(m_xMap.transform(bad.to), m_visible.right() + 2);
        if (qMax(from, to) < drawnTo + 1)
            continue; // many short ones in a pixel make one mark
        drawnTo = qMax(from, to);
        const QRectF bar(from, bottom - barHeight, qMax(1.0, to - from), barHeight);
        m_painter.setBrush(QBrush(pen.color(), Qt::BDiagPattern));
        m_painter.drawRect(bar);
        markEnds(data, bad.from, bad.to);
    }
    m_painter.restore();
}

/// An upright mark at the last point before a gap and at the first one behind it.
void CurvePainter::markEnds(const CurveData &data, double from, double to)
{
    if (!data.isSorted())
        return;
    constexpr double reach = 4;
    const auto mark = [&](std::size_t i) {
        const QPointF &point = data.points()[i];
        const QPointF at(m_xMap.transform(point.x()), m_yMap.transform(point.y()));
        if (m_visible.contains(at))
            m_painter.drawLine(at - QPointF(0, reach), at + QPointF(0, reach));
    };
    const std::size_t first = data.indexAt(from);
    if (first > 0 && data.isDrawn(first - 1))
        mark(first - 1);
    std::size_t behind = data.indexAt(to);
    while (behind < data.size() && data.points()[behind].x() == to && !data.isDrawn(behind))
        ++behind;
    if (behind < data.size() && data.isDrawn(behind))
        mark(behind);
}

} // namespace Widgets
