#include "widgets/charts/multiaxis/MultiAxisLayout.h"

#include "widgets/charts/multiaxis/ExtraAxis.h"
#include "widgets/charts/multiaxis/MultiAxisScales.h"

#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

namespace Widgets {

namespace {

bool isVertical(int position)
{
    return QwtAxis::isYAxis(position);
}

QRectF without(const QRectF &rect, const double (&sums)[QwtAxis::PosCount])
{
    return rect.adjusted(sums[QwtAxis::yLeft], sums[QwtAxis::xTop], -sums[QwtAxis::yRight],
                         -sums[QwtAxis::xBottom]);
}

} // namespace

MultiAxisLayout::Stack MultiAxisLayout::stackOf(int position, double length) const
{
    Stack stack;
    for (const auto &axis : m_scales.extraAxes(position)) {
        const QwtScaleWidget *scale = axis->widget();
        const double size =
            axis->isVisible() ? scale->dimForLength(int(length), scale->font()) : 0.0;
        stack.sizes.append(size);
        stack.sum += size;
    }
    return stack;
}

void MultiAxisLayout::activate(const QwtPlot *plot, const QRectF &plotRect, Options options)
{
    m_bands.clear();
    // A title wraps by the length of its scale, and that by what the scales across leave: the
    // second pass knows the canvas. So it is with labels that pass the ends of a scale.
    QSizeF length = plotRect.size();
    Stack stacks[QwtAxis::PosCount];
    double beyond[QwtAxis::PosCount] = {};
    for (int pass = 0; pass < 2; ++pass) {
        double sums[QwtAxis::PosCount];
        for (int position = 0; position < QwtAxis::PosCount; ++position) {
            stacks[position] =
                stackOf(position, isVertical(position) ? length.height() : length.width());
            sums[position] = stacks[position].sum + beyond[position];
        }
        QwtPlotLayout::activate(plot, without(plotRect, sums), options);
        length = canvasRect().size();
        addLabelsBeyond(plotRect, beyond);
    }
    placeStacks(stacks);
}

/// Qwt makes room for the labels of its own scales only.
void MultiAxisLayout::addLabelsBeyond(const QRectF &plotRect,
                                      double (&beyond)[QwtAxis::PosCount]) const
{
    const QRectF canvas = canvasRect();
    const double room[QwtAxis::PosCount] = {
        canvas.left() - plotRect.left(), plotRect.right() - canvas.right(),
        plotRect.bottom() - canvas.bottom(), canvas.top() - plotRect.top()};
    for (int position = 0; position < QwtAxis::PosCount; ++position) {
        const int start = isVertical(position) ? QwtAxis::xTop : QwtAxis::yLeft;
        const int end = isVertical(position) ? QwtAxis::xBottom : QwtAxis::yRight;
        for (const auto &axis : m_scales.extraAxes(position)) {
            if (!axis->isVisible())
                continue;
            beyond[start] = qMax(beyond[start], axis->widget()->startBorderDist() -
                                                    canvasMargin(start) - room[start]);
            beyond[end] =
                qMax(beyond[end], axis->widget()->endBorderDist() - canvasMargin(end) - room[end]);
        }
    }
}

void MultiAxisLayout::placeStacks(const Stack (&stacks)[QwtAxis::PosCount])
{
    for (int position = 0; position < QwtAxis::PosCount; ++position) {
        const QRectF first = scaleRect(position).isValid() ? scaleRect(position) : canvasRect();
        const bool outwardsIsLess = position == QwtAxis::yLeft || position == QwtAxis::xTop;
        double edge = isVertical(position) ? (outwardsIsLess ? first.left() : first.right())
                                           : (outwardsIsLess ? first.top() : first.bottom());
        for (int i = 0; i < stacks[position].sizes.size(); ++i) {
            const double size = stacks[position].sizes.at(i);
            const double from = outwardsIsLess ? edge - size : edge;
            edge = outwardsIsLess ? from : edge + size;
            if (size > 0)
                m_bands.insert(packedAxis({position, i + 1}), isVertical(position)
                                                                  ? QRectF(from, 0, size, 0)
                                                                  : QRectF(0, from, 0, size));
        }
    }
    // Title, footer and legend stood next to the scales: the stacks come in between.
    setTitleRect(titleRect().translated(0, -stacks[QwtAxis::xTop].sum));
    setFooterRect(footerRect().translated(0, stacks[QwtAxis::xBottom].sum));
    switch (legendPosition()) {
    case QwtPlot::LeftLegend:
        setLegendRect(legendRect().translated(-stacks[QwtAxis::yLeft].sum, 0));
        break;
    case QwtPlot::RightLegend:
        setLegendRect(legendRect().translated(stacks[QwtAxis::yRight].sum, 0));
        break;
    case QwtPlot::TopLegend:
        setLegendRect(legendRect().translated(0, -stacks[QwtAxis::xTop].sum));
        break;
    case QwtPlot::BottomLegend:
        setLegendRect(legendRect().translated(0, stacks[QwtAxis::xBottom].sum));
        break;
    }
}

void MultiAxisLayout::invalidate()
{
    QwtPlotLayout::invalidate();
    m_bands.clear();
}

QSize MultiAxisLayout::minimumSizeHint(const QwtPlot *plot) const
{
    QSize size = QwtPlotLayout::minimumSizeHint(plot);
    for (int position = 0; position < QwtAxis::PosCount; ++position) {
        const int sum = int(stackOf(position, QWIDGETSIZE_MAX).sum);
        size += isVertical(position) ? QSize(sum, 0) : QSize(0, sum);
    }
    return size;
}

QRectF MultiAxisLayout::scaleRect(const ExtraAxis &axis, const QwtScaleMap &map,
                                  const QPointF &origin) const
{
    const auto band = m_bands.constFind(packedAxis(axis.id()));
    if (band == m_bands.constEnd())
        return {};
    const QwtScaleWidget *scale = axis.widget();
    const double from = qMin(map.p1(), map.p2()) - scale->startBorderDist();
    const double length = map.pDist() + scale->startBorderDist() + scale->endBorderDist();
    if (isVertical(axis.id().pos))
        return {band->x(), origin.y() + from, band->width(), length};
    return {origin.x() + from, band->y(), length, band->height()};
}

} // namespace Widgets
