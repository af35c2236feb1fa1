#include "widgets/charts/legend/SerieColor.h"

#include "widgets/charts/series/ISerie.h"

#include "nodes/charts/widgetChartBasicSerie.h"

#include <QBrush>
#include <QPen>

#include <qwt_plot_curve.h>
#include <qwt_plot_intervalcurve.h>

namespace Widgets {

namespace {

template <class Curve> void colorPen(Curve &curve, const QColor &color)
{
    QPen pen = curve.pen();
    pen.setColor(color);
    curve.setPen(pen);
}

} // namespace

void SetSerieColor(ISerie &serie, const QColor &color)
{
    serie.setColor(color);
    if (auto *curve = dynamic_cast<QwtPlotCurve *>(&serie))
        colorPen(*curve, color);
    auto *tube = dynamic_cast<QwtPlotIntervalCurve *>(&serie);
    if (!tube)
        return;
    colorPen(*tube, color);
    QColor filling = color;
    filling.setAlpha(tube->brush().color().alpha());
    tube->setBrush(filling);
}

} // namespace Widgets
