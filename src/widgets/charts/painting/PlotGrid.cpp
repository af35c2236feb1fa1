#include "widgets/charts/painting/PlotGrid.h"

#include <qwt_painter.h>
#include <qwt_scale_map.h>

#include <QPainter>

namespace Widgets {

namespace {

struct Target
{
    QPainter &painter;
    const QwtScaleMap &x;
    const QwtScaleMap &y;
    QRect area;
};

bool isThin(const QPen &pen)
{
    return pen.style() == Qt::NoPen || (pen.style() == Qt::SolidLine && pen.widthF() <= 1 &&
                                        pen.brush().style() == Qt::SolidPattern);
}

bool isPlain(QPainter &painter)
{
    return QwtPainter::roundingAlignment(&painter) &&
           painter.deviceTransform().type() <= QTransform::TxTranslate &&
           !painter.testRenderHint(QPainter::Antialiasing);
}

void fill(const Target &to, const QPen &pen, Qt::Orientation lines, const QList<double> &ticks)
{
    if (pen.style() == Qt::NoPen)
        return;
    const QRect &area = to.area;
    const QSize length = area.size() - QSize(1, 1); // a flat cap ends before the last pixel
    for (const double tick : ticks) {
        if (lines == Qt::Vertical) {
            const int x = qRound(to.x.transform(tick));
            if (x >= area.left() && x <= area.right())
                to.painter.fillRect(x, area.top(), 1, length.height(), pen.color());
        } else {
            const int y = qRound(to.y.transform(tick));
            if (y >= area.top() && y <= area.bottom())
                to.painter.fillRect(area.left(), y, length.width(), 1, pen.color());
        }
    }
}

} // namespace

void PlotGrid::draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                    const QRectF &canvasRect) const
{
    const QRect area = canvasRect.toRect();
    const bool hasMajor = xEnabled() || yEnabled();
    const bool hasMinor = (xEnabled() && xMinEnabled()) || (yEnabled() && yMinEnabled());
    const bool isThinAll = (!hasMajor || isThin(majorPen())) && (!hasMinor || isThin(minorPen()));
    if (!isThinAll || !isPlain(*painter) || area != canvasRect)
        return QwtPlotGrid::draw(painter, xMap, yMap, canvasRect);
    const Target to{*painter, xMap, yMap, area};
    for (const auto kind : {QwtScaleDiv::MinorTick, QwtScaleDiv::MediumTick}) {
        if (xEnabled() && xMinEnabled())
            fill(to, minorPen(), Qt::Vertical, xScaleDiv().ticks(kind));
        if (yEnabled() && yMinEnabled())
            fill(to, minorPen(), Qt::Horizontal, yScaleDiv().ticks(kind));
    }
    if (xEnabled())
        fill(to, majorPen(), Qt::Vertical, xScaleDiv().ticks(QwtScaleDiv::MajorTick));
    if (yEnabled())
        fill(to, majorPen(), Qt::Horizontal, yScaleDiv().ticks(QwtScaleDiv::MajorTick));
}

} // namespace Widgets
