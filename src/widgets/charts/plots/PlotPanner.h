#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/QwtAxisId.h"

#include <qwt_interval.h>
#include <qwt_plot_panner.h>

#include <vector>

namespace Widgets {

class MultiAxisPlot;

/// Drags the curves of a plot about: along both directions, or along one of them. What is dragged
/// follows the hand with its scales; letting go tells panned() once, Escape takes it back. GUI
/// thread.
class WIDGETS_EXPORT PlotPanner : public QwtPlotPanner
{
    Q_OBJECT

public:
    /// `canvas` is that of a MultiAxisPlot.
    explicit PlotPanner(QWidget *canvas);

    /// Switches the direction of that axis, an X or a Y one.
    void setAxisEnabled(const QwtAxisId &axis, bool on);
    bool isAxisEnabled(const QwtAxisId &axis) const;
    /// The hand holds the curves: nothing else is to move them.
    bool isDragging() const { return m_isDragging; }
    /// As if dragged by that many pixels and let go.
    void pan(int dx, int dy);

protected:
    void moveCanvas(int dx, int dy) override;
    void widgetMousePressEvent(QMouseEvent *event) override;
    void widgetMouseMoveEvent(QMouseEvent *event) override;
    void widgetMouseReleaseEvent(QMouseEvent *event) override;
    void widgetKeyPressEvent(QKeyEvent *event) override;

private:
    struct Scale
    {
        QwtAxisId axis;
        QwtInterval interval;
        bool isAutomatic;
    };

    MultiAxisPlot *scales() const;
    void shiftExtraAxes(int dx, int dy);
    void takeBack();

    bool m_pansX = true;
    bool m_pansY = true;
    bool m_isDragging = false;
    QPoint m_pressed;
    QPoint m_moved; // since the press
    std::vector<Scale> m_before;
};

} // namespace Widgets
