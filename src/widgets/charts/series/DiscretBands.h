#pragma once

#include "widgets/charts/multiaxis/MultiAxisItem.h"

#include <QString>
#include <qwt_plot_item.h>

namespace Widgets {

class CurveData;
class qwidgetChartDiscretSerie;

/// Where a discrete signal is on: filled, with hatching where it is not known. Told apart by what
/// is filled, not by colour.
class DiscretFill : public MultiAxisItem<QwtPlotItem>
{
public:
    explicit DiscretFill(const qwidgetChartDiscretSerie &serie);

    /// The whole band, whatever is known of the signal.
    QRectF boundingRect() const override;
    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvas) const override;

private:
    const qwidgetChartDiscretSerie &m_serie;
};

/// The line below a discrete signal's band.
class DiscretBaseLine : public MultiAxisItem<QwtPlotItem>
{
public:
    explicit DiscretBaseLine(const qwidgetChartDiscretSerie &serie) : m_serie(serie) {}

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvas) const override;

private:
    const qwidgetChartDiscretSerie &m_serie;
};

/// Its name in the band, with the present state in words.
class DiscretCaption : public MultiAxisItem<QwtPlotItem>
{
public:
    explicit DiscretCaption(const qwidgetChartDiscretSerie &serie) : m_serie(serie) {}

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvas) const override;

private:
    const qwidgetChartDiscretSerie &m_serie;
};

} // namespace Widgets
