#pragma once

#include "widgets/WidgetsExport.h"

#include <qwt_plot_grid.h>

namespace Widgets {

/// The stock grid, but for its thin plain lines on a screen, which are filled as rectangles: of an
/// upright line the stroker paints each pixel by itself, with the clip of a part of a window. The
/// picture is the same.
class WIDGETS_EXPORT PlotGrid : public QwtPlotGrid
{
public:
    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;
};

} // namespace Widgets
