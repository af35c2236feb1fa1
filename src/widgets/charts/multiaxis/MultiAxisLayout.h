#pragma once

#include "widgets/charts/multiaxis/QwtAxisId.h"

#include <qwt_plot_layout.h>

#include <QHash>

class QwtScaleMap;

namespace Widgets {

class ExtraAxis;
class MultiAxisScales;

/// Qwt's layout inside the rectangle that the further scales leave, and these stacked outside of
/// Qwt's own. Across an axis the place comes from here, along it from the map of the canvas: ticks
/// of all axes of a side then start and end at the same pixel.
class MultiAxisLayout : public QwtPlotLayout
{
public:
    explicit MultiAxisLayout(const MultiAxisScales &scales) : m_scales(scales) {}

    void activate(const QwtPlot *plot, const QRectF &plotRect, Options options) override;
    void invalidate() override;
    [[nodiscard]] QSize minimumSizeHint(const QwtPlot *plot) const override;

    /// Place of the scale of a further axis; `map` is the map of its side in coordinates whose
    /// origin is `origin`. Empty when the axis is hidden.
    [[nodiscard]] QRectF scaleRect(const ExtraAxis &axis, const QwtScaleMap &map,
                                   const QPointF &origin) const;
    using QwtPlotLayout::scaleRect;

private:
    struct Stack
    {
        double sum = 0;        ///< what the further scales of a side take from the plot
        QVector<double> sizes; ///< by index - 1; 0: hidden
    };
    [[nodiscard]] Stack stackOf(int position, double length) const;
    void addLabelsBeyond(const QRectF &plotRect, double (&beyond)[QwtAxis::PosCount]) const;
    void placeStacks(const Stack (&stacks)[QwtAxis::PosCount]);

    const MultiAxisScales &m_scales;
    QHash<int, QRectF> m_bands; // by packed axis: only the direction across the axis counts
};

} // namespace Widgets
