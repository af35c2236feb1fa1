#pragma once

#include "widgets/charts/series/XYPairing.h"
#include "widgets/charts/series/qwidgetChartBasicSerie.h"

#include "nodes/values/Connection.h"
#include "utils/relay/QueueRelay.h"

#include <QTimer>

namespace Nodes {
class widgetChartXYSerie;
}

namespace Widgets {

/// One signal over another: samples that lie close enough in time make a point. The newest one is
/// marked, and arrows on the line show which way it went. GUI thread.
class WIDGETS_EXPORT qwidgetChartXYSerie : public qwidgetChartBasicSerie
{
    Q_OBJECT

public:
    qwidgetChartXYSerie(Nodes::widgetChartXYSerie *node, QObject *parent);
    ~qwidgetChartXYSerie() override;

    /// Not what it draws: warns of it. The history of both signals goes by updateHistory.
    void updateArchPoints(const std::vector<Nodes::SignalHistoryResponse> &answer) override;
    /// Takes the samples of both signals, wherever in time they belong.
    void updateHistory(const std::vector<Nodes::SignalHistoryResponse> &answer);
    /// Takes the live values of both signals by itself from now on, or no more.
    void setFollowing(bool on);
    /// Shows what it may look like within these ranges, for who edits the chart.
    void sketch(const QwtInterval &x, const QwtInterval &y);
    void onUpdateProperties() override;
    void updateLabel(const QPointF &last) override;

    /// Values of both signals, with their source times.
    void onUpdateValues(const std::vector<Nodes::SignalValue> &xValues,
                        const std::vector<Nodes::SignalValue> &yValues);
    /// A value of the signal that is drawn upwards; `x` is its time.
    void appendPoint(double x, const Nodes::SignalValue &value) override;
    QPointF lastPoint() const override;
    /// By time, as the samples came, not by place.
    void trimLeft(double time) override;
    void clearPoints() override;
    std::size_t pointCount() const override;
    double heldUntil() const override;
    /// Time of the newest sample, X of ChartTime; 0 without any.
    double lastTime() const { return m_pairing.lastTime(); }

    void drawSeries(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                    const QRectF &canvas, int from, int to) const override;

protected:
    void takeAxes(const Nodes::widgetChartBasicSerie &node) override;

private:
    struct Value
    {
        bool isX;
        Nodes::SignalValue value;
    };

    Nodes::widgetChartXYSerie *xyNode() const;
    void onLive(std::vector<Value> values);
    void scheduleSync();
    /// Brings the points up to date with the samples.
    void sync();
    void drawArrows(QPainter &painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                    const QRectF &canvas) const;
    void drawNewest(QPainter &painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap) const;

    XYPairing m_pairing;
    QTimer m_sync;
    Utils::QueueRelay<Value> m_live;
    Nodes::ScopedConnection m_xConnection;
    Nodes::ScopedConnection m_yConnection;
};

} // namespace Widgets
