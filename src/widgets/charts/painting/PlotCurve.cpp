#include "widgets/charts/painting/PlotCurve.h"

#include "widgets/charts/painting/CurvePainter.h"

#include <qwt_plot.h>
#include <qwt_symbol.h>

#include <QPainter>

#include <cmath>
#include <limits>

namespace Widgets {

namespace {

/// Other data than ours, drawn like ours.
CurveData copied(const QwtSeriesData<QPointF> &series, int from, int to)
{
    CurveData data;
    data.reserve(std::size_t(to - from + 1));
    for (int i = from; i <= to; ++i)
        data.append(series.sample(std::size_t(i)));
    return data;
}

} // namespace

PlotCurve::PlotCurve(const QString &title) : MultiAxisItem<QwtPlotCurve>(title)
{
    setData(new CurveData);
    setCurveAttribute(Inverted, true);
}

CurveData *PlotCurve::points()
{
    return dynamic_cast<CurveData *>(data());
}

const CurveData *PlotCurve::points() const
{
    return dynamic_cast<const CurveData *>(data());
}

int PlotCurve::closestPoint(const QPoint &position, double *distance) const
{
    const CurveData *own = points();
    if (!own || !plot())
        return -1;
    // Qwt would ask for the maps of its own axes.
    const QwtScaleMap xMap = adapted(xAxis(), plot()->canvasMap(xAxis().pos));
    const QwtScaleMap yMap = adapted(yAxis(), plot()->canvasMap(yAxis().pos));
    int closest = -1;
    double best = std::numeric_limits<double>::max();
    // False when this point and all behind it are further away.
    const auto look = [&](std::size_t i) {
        const double dx = xMap.transform(own->points()[i].x()) - position.x();
        if (own->isSorted() && std::abs(dx) > best)
            return false;
        const double length =
            own->isDrawn(i) ? std::hypot(dx, yMap.transform(own->points()[i].y()) - position.y())
                            : best;
        if (length < best) {
            best = length;
            closest = int(i);
        }
        return true;
    };
    const std::size_t start = own->isSorted() ? own->indexAt(xMap.invTransform(position.x())) : 0;
    for (std::size_t i = start; i < own->size() && look(i); ++i) {
    }
    for (std::size_t i = start; i > 0 && look(i - 1); --i) {
    }
    if (distance && closest >= 0)
        *distance = best;
    return closest;
}

void PlotCurve::drawCurve(QPainter *painter, int style, const QwtScaleMap &xMap,
                          const QwtScaleMap &yMap, const QRectF &canvasRect, int from, int to) const
{
    if (from > to || to < 1 || from + 1 > to || style == NoCurve ||
        painter->pen().style() == Qt::NoPen)
        return;
    const bool isLevel = orientation() == Qt::Horizontal;
    if (brush().style() != Qt::NoBrush || (style == Sticks && isLevel)) {
        QwtPlotCurve::drawCurve(painter, style, xMap, yMap, canvasRect, from, to);
        return;
    }
    CurvePainter::Look look;
    look.pen = painter->pen();
    look.baseline = baseline();
    if (style == Sticks)
        look.style = CurvePainter::Style::Sticks;
    else if (style == Dots)
        look.style = CurvePainter::Style::Dots;
    else if (style == Steps)
        look.join =
            isLevel == testCurveAttribute(Inverted) ? CurveJoin::StepAtOnce : CurveJoin::StepAtNext;
    CurvePainter curve(*painter, xMap, yMap, canvasRect);
    if (const CurveData *own = points()) {
        curve.draw(*own, look, std::size_t(from), std::size_t(to));
        if (marksBad() && !own->badStretches().empty())
            curve.markBad(*own, look.pen, badRow());
    } else {
        curve.draw(copied(*data(), from, to), look, 0, std::size_t(to - from));
    }
}

/// By the order in which the curves are drawn, so that their bars do not hide each other.
int PlotCurve::badRow() const
{
    constexpr int rows = 6;
    int row = 0;
    const QwtPlotItemList items = plot() ? plot()->itemList() : QwtPlotItemList();
    for (const QwtPlotItem *item : items) {
        const auto *curve = dynamic_cast<const PlotCurve *>(item);
        if (curve == this)
            break;
        if (curve && curve->isVisible() && curve->points() &&
            !curve->points()->badStretches().empty())
            ++row;
    }
    return row % rows;
}

void PlotCurve::drawSymbols(QPainter *painter, const QwtSymbol &symbol, const QwtScaleMap &xMap,
                            const QwtScaleMap &yMap, const QRectF &canvasRect, int from,
                            int to) const
{
    const CurveData *own = points();
    if (!own) {
        QwtPlotCurve::drawSymbols(painter, symbol, xMap, yMap, canvasRect, from, to);
        return;
    }
    const CurvePainter curve(*painter, xMap, yMap, canvasRect);
    auto first = std::size_t(from);
    auto last = std::size_t(to);
    if (from > to || !curve.limitToView(*own, first, last))
        return;
    const double distance = symbol.size().width() / 2.0;
    QPolygonF places;
    for (std::size_t i = first; i <= last; ++i) {
        if (!own->isDrawn(i))
            continue;
        const QPointF place(xMap.transform(own->points()[i].x()),
                            yMap.transform(own->points()[i].y()));
        if (places.isEmpty() || (place - places.last()).manhattanLength() >= distance)
            places.append(place);
    }
    symbol.drawSymbols(painter, places);
}

} // namespace Widgets
