#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/MultiAxisItem.h"
#include "widgets/charts/painting/CurveData.h"

#include <qwt_plot_curve.h>

namespace Widgets {

/// A curve whose drawing costs the width of the canvas, not the number of its points: the picture
/// is that of each pair of neighbouring points drawn by itself, a pair with a NaN left out.
///
/// Qualities can be told without colour: uncertain and stale stretches are dotted, a bad one is a
/// gap with a mark at both ends and a hatched bar at the lower edge of the canvas, a row for each
/// curve that has one. Steps hold a value until the next one unless the Inverted attribute is taken
/// away.
/// Symbols are left out where they would lie on each other. GUI thread only.
class WIDGETS_EXPORT PlotCurve : public MultiAxisItem<QwtPlotCurve>
{
public:
    explicit PlotCurve(const QString &title = QString());

    /// The points; belongs to the curve. Null after other data has been set.
    [[nodiscard]] CurveData *points();
    [[nodiscard]] const CurveData *points() const;

    /// Index of the drawn point nearest to a position on the canvas, on the axes of this curve; its
    /// distance in pixels in `distance`. -1 when there is none or the curve is on no plot.
    [[nodiscard]] int closestPoint(const QPoint &position, double *distance = nullptr) const;

protected:
    /// False: bad stretches are gaps without marks, whoever draws the curve tells of them.
    virtual bool marksBad() const { return true; }
    void drawCurve(QPainter *painter, int style, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                   const QRectF &canvasRect, int from, int to) const override;
    void drawSymbols(QPainter *painter, const QwtSymbol &symbol, const QwtScaleMap &xMap,
                     const QwtScaleMap &yMap, const QRectF &canvasRect, int from,
                     int to) const override;

private:
    [[nodiscard]] int badRow() const;
};

} // namespace Widgets
