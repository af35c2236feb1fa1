#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/SignalValue.h"
#include "utils/relay/NodeRelay.h"
#include "utils/relay/WatchedNode.h"

#include <QColor>
#include <QObject>
#include <QPen>
#include <QPointF>
#include <QString>
#include <QVariant>

#include <optional>
#include <utility>
#include <vector>

class QSize;
class QwtPlot;

namespace Nodes {
class archiverSourceConnector;
class BasicProperty;
class SignalHistoryResponse;
class widgetChartBasicSerie;
} // namespace Nodes

namespace Widgets {

/// One signal on a plot, whatever it is drawn as: follows its node, holds the points, tells the
/// cells of its row in the legend. Every implementation is a plot item at the same time. X values
/// are those of ChartTime: milliseconds of local time. The node may go before the series; what it
/// then shows is what it showed last. GUI thread.
class WIDGETS_EXPORT ISerie : public QObject
{
    Q_OBJECT

public:
    ISerie(Nodes::widgetChartBasicSerie *node, QObject *parent);
    ~ISerie() override;

    /// Null once the node has gone.
    Nodes::widgetChartBasicSerie *getNode() const;

    const QColor &getColor() const { return m_color; }
    void setColor(const QColor &color) { m_color = color; }
    /// Colour of the flag at the newest point: that of the line.
    virtual QColor getColorFlag() const { return m_color; }
    /// Place within its group, 0-based.
    int getNumber() const { return m_number; }
    void setNumber(int number) { m_number = number; }
    /// Added to every value before it is stored, engineering units.
    float getOffsetY() const { return m_offsetY; }
    void setOffsetY(float offset);
    /// Number of the plot that shows it.
    int getPlotAreaNo() const { return m_plotAreaNo; }
    /// Whether new values of its signal go on being appended.
    virtual bool isLive() const;

    /// The connector of its signal with the archive; null when it has none or that has gone.
    Nodes::archiverSourceConnector *getArchiverSource() const;
    /// Whether there was one when the series was made.
    bool hasArchiverSource() const { return m_hasArchiverSource; }

    /// Text of the cursor's mark on it; "" without one.
    virtual void setMarkerData(QString text);
    const QString &markerData() const { return m_markerData; }

    /// Null: nothing. The Y axis is the node's among those of the plot.
    virtual void attachToPlot(QwtPlot *plot) = 0;
    virtual QwtPlot *plot() const = 0;
    virtual void onUpdateProperties() = 0;
    /// Takes the samples of its signal, wherever in time they belong; others are passed over.
    virtual void updateArchPoints(const std::vector<Nodes::SignalHistoryResponse> &answer) = 0;
    /// Whether that forgets what came live before.
    virtual bool isReplacedByAnswers() const { return false; }
    /// The flag's text for the newest point.
    virtual void updateLabel(const QPointF &last) = 0;
    virtual void setSymbol(int type, const QSize &size) = 0;
    virtual void setZOrder(double z) = 0;
    /// Puts its flag, if it is attached, in front of all that is as high: what is drawn later would
    /// strike through it.
    virtual void raiseFlag() {}
    virtual void setVisible(bool isVisible) = 0;
    virtual bool isVisible() const = 0;

    /// A published value at `x`, without the offset. A value that is no number is a gap.
    virtual void appendPoint(double x, const Nodes::SignalValue &value) = 0;
    /// (0, 0) without points.
    virtual QPointF lastPoint() const = 0;
    /// Forgets what lies left of `x`, but for one point, so that the line enters from the edge.
    virtual void trimLeft(double x) = 0;
    /// Forgets all points and gives their memory back.
    virtual void clearPoints() = 0;
    virtual std::size_t pointCount() const = 0;

    /// A cell of the legend: a SerieColumn, a Qt or SerieRole role; invalid for what it has not.
    virtual QVariant getData(int column, int role) const;
    /// Where SerieColumn::CursorValue is read; nothing: no cursor.
    void setCursor(std::optional<double> x);
    std::optional<double> cursor() const { return m_cursor; }

signals:
    /// What the legend tells of it has changed: values, cursor.
    void informationChaged();
    void offsetYChanged();
    void propertyChanged();
    void updateProperty(Nodes::BasicProperty *property);

protected:
    /// Value at `x` as it is drawn, without the offset; nothing where nothing is known.
    virtual std::optional<Nodes::SignalValue> valueAt(double x) const = 0;
    /// Lowest and highest number that is visible, without the offset; nothing when there is none.
    virtual std::optional<std::pair<double, double>> visibleRange() const = 0;
    /// Pen of its line.
    virtual QPen linePen() const = 0;
    /// A value as an operator reads it, marked when it is not good.
    virtual QString textOf(const Nodes::SignalValue &value) const;
    /// Takes over colour, offset and plot area of the node.
    void takeNode();
    /// The offset that the node asks for.
    virtual float offsetOf(const Nodes::widgetChartBasicSerie &node) const;

private:
    void takeVisible(const Nodes::BasicProperty *property);
    QVariant textCell(const QString &text, int role) const;
    QVariant valueCell(const std::optional<Nodes::SignalValue> &value, int role) const;
    QVariant colorCell(int role) const;
    QVariant limitCell(bool isMaximum, int role) const;
    QString axisTitle() const;
    std::optional<Nodes::SignalValue> presentValue() const;

    Utils::WatchedNode<Nodes::widgetChartBasicSerie> m_node;
    Nodes::NodeLink m_archiverSource;
    bool m_hasArchiverSource = false;
    QColor m_color;
    int m_number = 0;
    float m_offsetY = 0;
    int m_plotAreaNo = 1;
    QString m_markerData;
    std::optional<double> m_cursor;
    Utils::NodeRelay m_relay;
};

} // namespace Widgets
