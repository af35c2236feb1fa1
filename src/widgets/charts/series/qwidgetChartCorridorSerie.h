#pragma once

#include "widgets/charts/multiaxis/MultiAxisItem.h"
#include "widgets/charts/painting/IntervalSeriesData.h"
#include "widgets/charts/painting/PlotCurve.h"
#include "widgets/charts/series/CorridorTube.h"
#include "widgets/charts/series/ISerie.h"

#include "nodes/values/Connection.h"
#include "utils/relay/QueueRelay.h"

#include <QTimer>
#include <qwt_plot_intervalcurve.h>

#include <memory>

namespace Nodes {
class widgetChartCorridorSerie;
}

namespace Widgets {

/// A tube with a line in its middle: between two signals about a third one or, where its node names
/// no edges, between the extremes of one signal in each slice of time. GUI thread.
class WIDGETS_EXPORT qwidgetChartCorridorSerie : public ISerie,
                                                 public MultiAxisItem<QwtPlotIntervalCurve>
{
    Q_OBJECT

public:
    static constexpr int Rtti = 1003;

    qwidgetChartCorridorSerie(Nodes::widgetChartCorridorSerie *node, QObject *parent);
    ~qwidgetChartCorridorSerie() override;

    int rtti() const override { return Rtti; }
    const PlotCurve &middle() const { return m_middle; }
    /// What is drawn; belongs to the series.
    const IntervalSeriesData &tube() const;
    /// Place of the tube nearest to `x`; nothing without any.
    std::optional<TubeSample> sampleAt(double x) const;
    /// Milliseconds that one place of the tube stands for; 0 where edges are signals.
    double sliceLength() const;

    void attachToPlot(QwtPlot *plot) override;
    QwtPlot *plot() const override { return QwtPlotIntervalCurve::plot(); }
    void onUpdateProperties() override;
    void updateArchPoints(const std::vector<Nodes::SignalHistoryResponse> &answer) override;
    /// Takes the live values of the edges by itself from now on, or no more; those of the middle
    /// are appended by the plot.
    void setFollowing(bool on);
    void updateLabel(const QPointF &last) override;
    void setSymbol(int type, const QSize &size) override;
    void setZOrder(double z) override;
    void setVisible(bool isVisible) override;
    bool isVisible() const override { return QwtPlotIntervalCurve::isVisible(); }
    void drawSeries(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                    const QRectF &canvas, int from, int to) const override;
    QVariant getData(int column, int role) const override;

    void appendPoint(double x, const Nodes::SignalValue &value) override;
    QPointF lastPoint() const override;
    void trimLeft(double x) override;
    void clearPoints() override;
    std::size_t pointCount() const override;

    /// Lays a tube about the line that is there, for who edits the chart.
    void sketch(double halfWidth);
    /// Puts the middles of the tube on the line where there is one signal only.
    void updateMiddleSerie();

protected:
    std::optional<Nodes::SignalValue> valueAt(double x) const override;
    std::optional<std::pair<double, double>> visibleRange() const override;
    QPen linePen() const override { return m_middle.pen(); }

private:
    struct Value
    {
        bool isUpper;
        Nodes::SignalValue value;
    };

    Nodes::widgetChartCorridorSerie *corridorNode() const;
    bool hasEdges() const;
    void onEdges(std::vector<Value> values);
    void scheduleSync();
    /// Brings what is drawn up to date with the samples.
    void sync();
    void drawRun(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                 const QRectF &canvas, int from, int to) const;

    PlotCurve m_middle;
    CorridorSlices m_slices;
    CorridorEdges m_edges;
    std::vector<TubeSample> m_samples; // what is drawn
    QTimer m_sync;
    Utils::QueueRelay<Value> m_live;
    Nodes::ScopedConnection m_lowerConnection;
    Nodes::ScopedConnection m_upperConnection;
};

} // namespace Widgets
