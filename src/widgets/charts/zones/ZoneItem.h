#pragma once

#include "widgets/charts/multiaxis/MultiAxisItem.h"

#include <QColor>
#include <QString>

#include <optional>

#include <qwt_plot_zoneitem.h>

namespace Widgets {

/// Band of a zone behind the curves: translucent and hatched, so that it is told from the ground
/// without colour, with lines at its limits and its name. Infinite limits leave a side open.
class ZoneItem : public MultiAxisItem<QwtPlotZoneItem>
{
public:
    ZoneItem();

    void setLook(const QColor &color, const QString &text);
    /// Nothing: a limit is not known, the band is not drawn, only told of.
    void setLimits(std::optional<QwtInterval> limits);
    /// While a limit is dragged, where it would be.
    void setDragged(std::optional<double> limit) { m_dragged = limit; }

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;
    QRectF boundingRect() const override;

private:
    void drawBand(QPainter &painter, const QRectF &band) const;
    void drawText(QPainter &painter, const QRectF &place, const QString &text) const;

    QColor m_color;
    QString m_text;
    std::optional<QwtInterval> m_limits;
    std::optional<double> m_dragged;
};

} // namespace Widgets
