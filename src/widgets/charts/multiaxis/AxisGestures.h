#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/QwtAxisId.h"

#include <QObject>
#include <QPoint>

class QMouseEvent;
class QWheelEvent;
class QwtScaleMap;
class QwtScaleWidget;

namespace Widgets {

class MultiAxisPlot;

/// Lets the operator move one axis alone, on its scale: dragging pans it, the wheel zooms it around
/// the cursor (a notch by a quarter), a double click gives it back to auto-scaling. What the axis
/// shows from then on stays until somebody changes it: its auto-scale is switched off.
///
/// Belongs to its plot; scales that come later are found by themselves. GUI thread only.
class WIDGETS_EXPORT AxisGestures : public QObject
{
    Q_OBJECT
public:
    static constexpr double WheelUnitsPerNotch = 120; ///< of QWheelEvent::angleDelta

    explicit AxisGestures(MultiAxisPlot *plot);

    /// Which axes listen: by default those on the left and on the right.
    void setEnabled(int position, bool on);
    [[nodiscard]] bool isEnabled(int position) const;
    /// As the wheel does on the scale, around that pixel of the canvas; nothing where it does not
    /// listen.
    void zoom(QwtAxisId axis, double notches, double canvasPixel);
    /// While the operator drags a scale.
    [[nodiscard]] bool isDragging() const { return m_isMoving; }
    /// False: a double click does nothing, the chart decides about auto-scale by itself.
    void setAutoScaleByDoubleClick(bool on) { m_doubleClick = on; }

signals:
    /// The operator has begun to move an axis by hand; its auto-scale is off from here on.
    void axisTaken(QwtAxisId axis);
    /// The scale has been set; the plot is replotted already.
    void axisMoved(QwtAxisId axis, double from, double to);
    /// The operator has given an axis back to auto-scaling.
    void axisReleased(QwtAxisId axis);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void watch(QObject *child);
    [[nodiscard]] QwtAxisId listeningAxis(QObject *watched) const;
    bool handle(QwtAxisId axis, QEvent *event);
    bool press(QwtAxisId axis, const QMouseEvent &event);
    bool move(const QMouseEvent &event);
    bool release(const QMouseEvent &event);
    bool doubleClick(QwtAxisId axis, const QMouseEvent &event);
    bool turn(QwtAxisId axis, const QWheelEvent &event);
    /// Puts what the two pixels of the canvas show to the ends of the axis.
    void show(QwtAxisId axis, const QwtScaleMap &map, double firstPixel, double lastPixel);
    void take(QwtAxisId axis);
    [[nodiscard]] double canvasPixel(QwtAxisId axis, const QPoint &inScale) const;

    MultiAxisPlot *m_plot;
    bool m_enabled[QwtAxis::PosCount] = {true, true, false, false};
    bool m_doubleClick = true;
    QwtAxisId m_dragged;
    double m_lastPixel = 0;
    bool m_isMoving = false;
};

} // namespace Widgets
