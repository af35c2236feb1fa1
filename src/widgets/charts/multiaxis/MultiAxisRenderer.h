#pragma once

#include "widgets/WidgetsExport.h"

#include <qwt_plot_renderer.h>

namespace Widgets {

class ExtraAxis;

/// QwtPlotRenderer that also draws the scales of further axes: use it for prints, PDF and pictures
/// of a MultiAxisPlot. Any other plot is rendered as by its base.
class WIDGETS_EXPORT MultiAxisRenderer : public QwtPlotRenderer
{
    Q_OBJECT
public:
    using QwtPlotRenderer::QwtPlotRenderer;

    void renderCanvas(const QwtPlot *plot, QPainter *painter, const QRectF &canvasRect,
                      const QwtScaleMap *maps) const override;

private:
    static void renderExtraScale(QPainter &painter, const ExtraAxis &axis, const QRectF &rect);
};

} // namespace Widgets
