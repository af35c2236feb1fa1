#pragma once

#include <qwt_interval.h>
#include <qwt_plot_item.h>

#include <QList>
#include <QPixmap>

namespace Widgets {

class Plot;

/// Picture of curves that were emptied until their answer comes: it keeps its place on the time
/// axis, so that nothing jumps or goes blank meanwhile. Detaches itself when it goes. GUI thread.
class HeldCurves : public QwtPlotItem
{
public:
    /// Those items of the plot, as they would be drawn now.
    HeldCurves(Plot &plot, const QList<QwtPlotItem *> &items);
    ~HeldCurves() override;

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

private:
    QPixmap m_picture;
    QwtInterval m_window;
};

} // namespace Widgets
