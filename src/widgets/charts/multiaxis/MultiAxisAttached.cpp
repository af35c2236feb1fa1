#include "widgets/charts/multiaxis/MultiAxisAttached.h"

#include "widgets/charts/multiaxis/MultiAxisPlot.h"

#include <qwt_scale_map.h>

#include <QRectF>

namespace Widgets {

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
    const auto *multi = axis.id > 0 ? qobject_cast<const MultiAxisPlot *>(plot) : nullptr;
    return multi ? multi->adaptedMap(axis, map) : map;
}

const QwtScaleDiv &MultiAxisAttached::divisionOf(QwtAxisId axis, const QwtScaleDiv &first,
                                                 const QwtPlot *plot)
{
    const auto *multi = axis.id > 0 ? qobject_cast<const MultiAxisPlot *>(plot) : nullptr;
    return multi && multi->isAxisValid(axis) ? multi->axisScaleDiv(axis) : first;
}

QRectF MultiAxisAttached::forScaling(QRectF rect, const QwtPlot *plot) const
{
    if (m_xAxis.id == 0 && m_yAxis.id == 0)
        return rect;
    const auto *multi = qobject_cast<const MultiAxisPlot *>(plot);
    if (!multi || !multi->isScalingFirstAxes())
        return rect;
    if (m_xAxis.id > 0)
        rect.setWidth(-1);
    if (m_yAxis.id > 0)
        rect.setHeight(-1);
    return rect;
}

} // namespace Widgets
