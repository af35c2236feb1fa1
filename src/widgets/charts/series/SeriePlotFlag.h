#pragma once

#include "widgets/charts/multiaxis/MultiAxisItem.h"
#include "widgets/charts/series/qwidgetChartBasicSerie.h"

#include <QStringList>
#include <qwt_plot_marker.h>

namespace Widgets {

/// Flag of a series at its newest point: the value, and its time where that is not at the right
/// edge. Flags of one plot are drawn below each other where they would hide one another.
class WIDGETS_EXPORT qwidgetChartBasicSerie::PlotFlag : public MultiAxisItem<QwtPlotMarker>
{
public:
    explicit PlotFlag(const qwidgetChartBasicSerie &serie);

    void setText(const QString &value, const QString &time);
    /// In coordinates of the canvas, at the last point that has numbers; empty without one.
    QRectF flagRect(const QwtScaleMap &xMap, const QwtScaleMap &yMap, const QRectF &canvas) const;
    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvas) const override;
    /// It takes no part in automatic scales.
    QRectF boundingRect() const override { return QRectF(1, 1, -2, -2); }

private:
    std::optional<QPointF> anchor() const;
    QStringList lines(const QRectF &canvas, double x) const;
    QRectF ownRect(const QwtScaleMap &xMap, const QwtScaleMap &yMap, const QRectF &canvas) const;
    /// The same moved below tool bars and the flags that are drawn before it.
    QRectF freeRect(const QwtScaleMap &xMap, const QwtScaleMap &yMap, const QRectF &canvas) const;

    const qwidgetChartBasicSerie &m_serie;
    QString m_value;
    QString m_time;
};

} // namespace Widgets
