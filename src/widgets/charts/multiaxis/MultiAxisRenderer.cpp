#include "widgets/charts/multiaxis/MultiAxisRenderer.h"

#include "widgets/charts/multiaxis/ExtraAxis.h"
#include "widgets/charts/multiaxis/MultiAxisLayout.h"
#include "widgets/charts/multiaxis/MultiAxisPlot.h"

#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <QPainter>

namespace Widgets {

void MultiAxisRenderer::renderCanvas(const QwtPlot *plot, QPainter *painter,
                                     const QRectF &canvasRect, const QwtScaleMap *maps) const
{
    QwtPlotRenderer::renderCanvas(plot, painter, canvasRect, maps);
    const auto *multi = qobject_cast<const MultiAxisPlot *>(plot);
    if (!multi)
        return;
    const auto *layout = dynamic_cast<const MultiAxisLayout *>(multi->plotLayout());
    for (const QwtAxisId id : multi->axes(true)) {
        const ExtraAxis *axis = multi->extraAxis(id);
        if (axis && layout)
            renderExtraScale(*painter, *axis, layout->scaleRect(*axis, maps[id.pos], QPointF()));
    }
}

void MultiAxisRenderer::renderExtraScale(QPainter &painter, const ExtraAxis &axis,
                                         const QRectF &rect)
{
    QwtScaleWidget *scale = axis.widget();
    QwtScaleDraw *draw = scale->scaleDraw();
    const double start = scale->startBorderDist();
    const double length =
        (axis.id().isYAxis() ? rect.height() : rect.width()) - start - scale->endBorderDist();
    QPointF origin;
    switch (axis.id().pos) {
    case QwtAxis::yLeft:
        origin = {rect.right() - 1 - scale->margin(), rect.top() + start};
        break;
    case QwtAxis::yRight:
        origin = {rect.left() + scale->margin(), rect.top() + start};
        break;
    case QwtAxis::xTop:
        origin = {rect.left() + start, rect.bottom() - 1 - scale->margin()};
        break;
    default:
        origin = {rect.left() + start, rect.top() + scale->margin()};
        break;
    }
    painter.save();
    scale->drawTitle(&painter, draw->alignment(), rect);
    painter.setFont(scale->font());
    const QPointF screenOrigin = draw->pos();
    const double screenLength = draw->length();
    draw->move(origin);
    draw->setLength(length);
    QPalette palette = scale->palette();
    palette.setCurrentColorGroup(QPalette::Active);
    draw->draw(&painter, palette);
    draw->move(screenOrigin);
    draw->setLength(screenLength);
    painter.restore();
}

} // namespace Widgets
