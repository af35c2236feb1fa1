#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/QwtAxisId.h"

class QRectF;
class QwtPlot;
class QwtScaleDiv;
class QwtScaleMap;

namespace Widgets {

/// What a plot has to know of an item that may stand on further axes; see MultiAxisItem.
class WIDGETS_EXPORT MultiAxisAttached
{
public:
    [[nodiscard]] QwtAxisId attachedXAxis() const { return m_xAxis; }
    [[nodiscard]] QwtAxisId attachedYAxis() const { return m_yAxis; }

protected:
    MultiAxisAttached() = default;
    ~MultiAxisAttached() = default;

    /// False when this is no axis of any plot; then nothing changes.
    bool takeAxis(QwtAxisId axis);
    [[nodiscard]] static QwtScaleMap adaptedMap(QwtAxisId axis, const QwtScaleMap &map,
                                                const QwtPlot *plot);
    [[nodiscard]] static const QwtScaleDiv &divisionOf(QwtAxisId axis, const QwtScaleDiv &first,
                                                       const QwtPlot *plot);
    [[nodiscard]] QRectF forScaling(QRectF rect, const QwtPlot *plot) const;

private:
    QwtAxisId m_xAxis{QwtAxis::xBottom};
    QwtAxisId m_yAxis{QwtAxis::yLeft};
};

} // namespace Widgets
