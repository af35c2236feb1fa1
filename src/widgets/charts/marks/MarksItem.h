#pragma once

#include "widgets/charts/marks/MarkClusters.h"

#include <QRectF>

#include <qwt_plot_item.h>

namespace Widgets {

/// The marks of events along the lower edge of the canvas, above the curves.
class MarksItem : public QwtPlotItem
{
public:
    static constexpr int Size = 18;    ///< pixels
    static constexpr int Spacing = 20; ///< between the middles of two

    MarksItem();

    /// In the order of time.
    void setEvents(const std::vector<Nodes::BasicEvent> &events);
    /// For a canvas on which the time axis is mapped so, left to right.
    std::vector<MarkCluster> marks(const QwtScaleMap &xMap, const QRectF &canvasRect) const;
    static QRectF rectOf(const MarkCluster &mark, const QRectF &canvasRect);

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

private:
    void drawMark(QPainter &painter, const MarkCluster &mark, const QRectF &rect) const;

    std::vector<Nodes::BasicEvent> m_events;
    std::vector<double> m_times; // X values
};

} // namespace Widgets
