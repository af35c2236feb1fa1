#pragma once

#include "widgets/charts/multiaxis/QwtAxisId.h"

#include <qwt_interval.h>
#include <qwt_scale_div.h>

#include <QPointer>

#include <memory>

class QwtPlot;
class QwtScaleEngine;
class QwtScaleMap;
class QwtScaleWidget;

namespace Widgets {

/// One axis of a plot beyond the four that Qwt has: its scale, its widget and how it is scaled.
/// Belongs to its plot (GUI thread only); the widget is a child of the plot.
class ExtraAxis
{
public:
    ExtraAxis(QwtAxisId id, QwtPlot *plot);
    ~ExtraAxis();
    ExtraAxis(const ExtraAxis &) = delete;
    ExtraAxis &operator=(const ExtraAxis &) = delete;

    [[nodiscard]] QwtAxisId id() const { return m_id; }
    [[nodiscard]] QwtScaleWidget *widget() const;
    [[nodiscard]] const QwtScaleDiv &scaleDiv() const { return m_scaleDiv; }
    [[nodiscard]] QwtScaleEngine *engine() const { return m_engine.get(); }
    [[nodiscard]] bool isVisible() const { return m_visible; }
    [[nodiscard]] bool isAutoScaled() const { return m_autoScale; }
    [[nodiscard]] int maxMajor() const { return m_maxMajor; }
    [[nodiscard]] int maxMinor() const { return m_maxMinor; }
    [[nodiscard]] double stepSize() const { return m_stepSize; }

    /// The map of this axis where Qwt's own map of its side is `side`: the same stretch of paper.
    [[nodiscard]] QwtScaleMap mapOn(const QwtScaleMap &side) const;

    void setVisible(bool visible) { m_visible = visible; }
    void setAutoScale(bool on) { m_autoScale = on; }
    /// Takes the engine over.
    void setEngine(QwtScaleEngine *engine);
    void setScale(double from, double to, double stepSize);
    void setScaleDiv(const QwtScaleDiv &division);
    void setMaxMajor(int steps);
    void setMaxMinor(int steps);

    /// Brings the division and the widget up to date; `data` is what the items on this axis need
    /// (invalid: nothing) and counts only while the axis scales itself.
    void update(const QwtInterval &data);

private:
    QwtAxisId m_id;
    QPointer<QwtScaleWidget> m_widget;
    std::unique_ptr<QwtScaleEngine> m_engine;
    QwtScaleDiv m_scaleDiv;
    double m_from = 0;
    double m_to = 1000;
    double m_stepSize = 0;
    int m_maxMajor = 8;
    int m_maxMinor = 5;
    bool m_visible = false;
    bool m_autoScale = true;
    bool m_divisionValid = false;
};

} // namespace Widgets
