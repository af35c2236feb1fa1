#pragma once

#include "widgets/charts/painting/PlotCurve.h"
#include "widgets/charts/series/ISerie.h"

#include <memory>

namespace Widgets {

struct SeriePoint;

/// A series that is one curve. GUI thread.
class WIDGETS_EXPORT qwidgetChartBasicSerie : public ISerie, public PlotCurve
{
    Q_OBJECT

public:
    static constexpr int Rtti = 1003;
    class PlotFlag;

    qwidgetChartBasicSerie(Nodes::widgetChartBasicSerie *node, QObject *parent);
    ~qwidgetChartBasicSerie() override;

    int rtti() const override { return Rtti; }
    /// The mark at the newest point; never null, belongs to the series.
    PlotFlag *GetFlag() const { return m_flag.get(); }

    void attachToPlot(QwtPlot *plot) override;
    QwtPlot *plot() const override { return PlotCurve::plot(); }
    void onUpdateProperties() override;
    void updateArchPoints(const std::vector<Nodes::SignalHistoryResponse> &answer) override;
    void updateLabel(const QPointF &last) override;
    void setSymbol(int type, const QSize &size) override;
    using PlotCurve::setSymbol;
    void setZOrder(double z) override;
    void raiseFlag() override;
    void setVisible(bool isVisible) override;
    bool isVisible() const override { return PlotCurve::isVisible(); }

    /// X until which the newest value holds: the present while new ones come live, for signals that
    /// tell their changes only; else that of its point.
    virtual double heldUntil() const;
    void drawSeries(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                    const QRectF &canvas, int from, int to) const override;

    void appendPoint(double x, const Nodes::SignalValue &value) override;
    QPointF lastPoint() const override;
    void trimLeft(double x) override;
    void clearPoints() override;
    std::size_t pointCount() const override;

protected:
    std::optional<Nodes::SignalValue> valueAt(double x) const override;
    std::optional<std::pair<double, double>> visibleRange() const override;
    QPen linePen() const override { return PlotCurve::pen(); }

    /// Joins neighbouring points as the node says.
    virtual CurveStyle styleOf(const Nodes::widgetChartBasicSerie &node) const;
    /// The number that is drawn for a value, without the offset.
    virtual double drawn(double number) const { return number; }
    /// Where it stands on the plot.
    virtual void takeAxes(const Nodes::widgetChartBasicSerie &node);
    /// Appends points in ascending order, wherever in time the present ones are.
    void merge(const std::vector<SeriePoint> &points);
    /// Puts these in place of all.
    void replacePoints(const std::vector<SeriePoint> &points);
    /// Id of the signal whose samples answers bring; 0: none.
    unsigned long archivedSignal() const;

private:
    void append(const SeriePoint &point);
    void onOffsetChanged();

    std::unique_ptr<PlotFlag> m_flag;
    float m_storedOffset = 0; // that of the points that are held
};

} // namespace Widgets
