#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/pickers/CursorReading.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QTimer>

#include <optional>
#include <vector>

class QMouseEvent;
class QwtPlot;
class QwtPlotItem;

namespace Widgets {

class CursorRelay;

/// What an operator points at in a plot: for each series the sample chosen, and the markers that
/// show it. A press on the canvas sets the first cursor; with Shift held, or held down for a
/// moment by a finger, the second one, for differences. Moving while pressed moves the cursor.
/// Child of its plot. GUI thread.
class WIDGETS_EXPORT IPickerCanvas : public QObject
{
    Q_OBJECT

public:
    enum enCursor { FirstCursor = 0, SecondCursor = 1, CursorCount = 2 };
    static constexpr int LongPress = 600; ///< ms

    explicit IPickerCanvas(QwtPlot *plot);
    ~IPickerCanvas() override;

    /// Null while the plot is being destroyed.
    QwtPlot *plot() const;

    /// Draws what is selected anew and asks for a replot.
    virtual void createMarkers() = 0;
    /// Detaches and deletes the marker items; what is selected stays.
    virtual void clearMarkers();
    bool eventFilter(QObject *watched, QEvent *event) override;

    /// What each series has there; empty while that cursor is not set or met nothing.
    const std::vector<CursorReading> &readings(enCursor cursor) const { return m_readings[cursor]; }
    /// Where the line of that cursor stands; nothing while it does not.
    std::optional<double> position(enCursor cursor) const { return m_positions[cursor]; }
    /// As if pressed at that place of the canvas.
    void place(enCursor cursor, const QPointF &pos);
    /// The first cursor goes back to where it was before the last press, and the second one comes
    /// where that was.
    void splitLast();
    /// Whether the first cursor has been somewhere else before.
    bool canSplit() const { return m_before && m_first; }
    void remove(enCursor cursor);

signals:
    void replot();

protected:
    /// Takes the samples at that place of the canvas for the cursor that is being set, then shows
    /// them by createMarkers.
    virtual void select(const QPointF &pos) = 0;

    enCursor selecting() const { return m_selecting; }
    /// For the cursor that is being set.
    void setReadings(std::vector<CursorReading> readings, std::optional<double> position);
    /// Attaches it and takes it over.
    void addMarker(QwtPlotItem *marker);
    /// Tells series and whoever else shows it where the cursors are.
    void tell();

private:
    void press(const QMouseEvent &event);
    void drag(const QMouseEvent &event);
    void onLongPress();

    QPointer<CursorRelay> m_relay;
    std::vector<CursorReading> m_readings[CursorCount];
    std::optional<double> m_positions[CursorCount];
    std::vector<QwtPlotItem *> m_markers; // owned, unless the plot has deleted them
    enCursor m_selecting = FirstCursor;
    std::optional<QPointF> m_before; // where the first cursor was pressed before the last time
    std::optional<QPointF> m_first;  // and the last time
    QPointF m_pressed;
    bool m_isHeld = false;
    QTimer m_longPress;
};

} // namespace Widgets
