#include "widgets/charts/multiaxis/MultiAxisAttached.h"

#include "widgets/charts/multiaxis/ExtraAxis.h"
#include "widgets/charts/multiaxis/MultiAxisScales.h"

#include <qwt_plot.h>
#include <qwt_scale_map.h>

#include <QRectF>

namespace Widgets {

namespace {

const ExtraAxis *extraAxis(QwtAxisId axis, const QwtPlot *plot)
{
    const auto *scales = axis.id > 0 ? dynamic_cast<const MultiAxisScales *>(plot) : nullptr;
    return scales ? scales->extraAxis(axis) : nullptr;
}

} // namespace

bool MultiAxisAttached::takeAxis(QwtAxisId axis)
{
    if (!QwtAxis::isValid(axis.pos) || axis.id < 0)
        return false;
    (axis.isXAxis() ? m_xAxis : m_yAxis) = axis;
    return true;
}

QwtScaleMap MultiAxisAttached::adaptedMap(QwtAxisId axis, const QwtScaleMap &map,
                                          const QwtPlot *plot)
{
    const ExtraAxis *further = extraAxis(axis, plot);
    return further ? further->mapOn(map) : map;
}

const QwtScaleDiv &MultiAxisAttached::divisionOf(QwtAxisId axis, const QwtScaleDiv &first,
                                                 const QwtPlot *plot)
{
    const ExtraAxis *further = extraAxis(axis, plot);
    return further ? further->scaleDiv() : first;
}

QRectF MultiAxisAttached::forScaling(QRectF rect, const QwtPlot *plot) const
{
    if (m_xAxis.id == 0 && m_yAxis.id == 0)
        return rect;
    const auto *scales = dynamic_cast<const MultiAxisScales *>(plot);
    if (!scales || !scales->isScalingFirstAxes())
        return rect;
    if (m_xAxis.id > 0)
        rect.setWidth(-1);
    if (m_yAxis.id > 0)
        rect.setHeight(-1);
    return rect;
}

} // namespace Widgets
