#pragma once

#include "widgets/reports/engine/items/ChartData.h"

#include <QRectF>

#include <qwt_scale_div.h>

class QPainter;

namespace LimeReport {

/// The axes of a chart: where a value stands, the grid and its labels. Units are 0.1 mm.
class ChartFrame
{
public:
    ChartFrame(const ChartData &data, const QRectF &rect, QPainter &painter);

    void draw(QPainter &painter) const;

    /// Of a pair of values as the data has them; horizontal bars have theirs turned.
    QPointF point(double x, double y) const;
    /// Room of one category along its axis.
    double categoryRoom() const;
    /// Where bars begin.
    double floor() const;
    const QRectF &plot() const { return m_plot; }

private:
    struct Tick
    {
        double value;
        QString label;
    };

    void scaleValues();
    void scaleAxis();
    QVector<Tick> valueTicks() const;
    QVector<Tick> axisTicks() const;
    void drawTicks(QPainter &painter, const QVector<Tick> &ticks, bool isVertical) const;
    void drawLabel(QPainter &painter, const QString &label, double at, bool isVertical) const;

    const ChartData &m_data;
    bool m_isTurned;
    double m_width;
    QwtScaleDiv m_values;
    QwtScaleDiv m_axis;
    QRectF m_plot;
};

} // namespace LimeReport
