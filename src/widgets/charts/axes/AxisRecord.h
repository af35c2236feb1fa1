#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/QwtAxisId.h"

#include "nodes/model/links/NodeLink.h"

#include <QObject>
#include <QPointer>
#include <qwt_scale_draw.h>

#include <memory>
#include <vector>

namespace Nodes {
class NodesContainer;
class widgetChartAxis;
} // namespace Nodes

namespace Widgets {

class MultiAxisPlot;

/// One axis of a plot as a node describes it: side, scale, labels, title. As many ticks as there
/// is room for their labels. One that only discrete series stand on is scaled by their bands. One
/// of values is moved by a hand until that gives it back. When it goes the axis stays as it is. GUI
/// thread.
class WIDGETS_EXPORT AxisRecord : public QObject
{
    Q_OBJECT

public:
    /// The axes of a group, in the order given; the plot has these and shows no others. A side
    /// without any keeps one hidden axis. Without an X axis there is one of time, without a Y axis
    /// one that scales itself: what is drawn stands on something.
    static std::vector<std::unique_ptr<AxisRecord>> make(MultiAxisPlot &plot,
                                                         const Nodes::NodesContainer &yAxes,
                                                         const Nodes::NodesContainer &xAxes);
    AxisRecord(MultiAxisPlot &plot, QwtAxisId axis, Nodes::widgetChartAxis *node);
    ~AxisRecord() override;

    QwtAxisId axis() const { return m_axis; }
    /// Null for an axis that no node describes, or whose node has gone.
    Nodes::widgetChartAxis *node() const;
    bool isTime() const { return m_isTime; }
    /// Takes over what the node says. An axis of time that shows a window already keeps its end.
    void apply();

signals:
    /// The axis has this scale draw now, the one before is gone.
    void scaleDrawChanged(QwtAxisId axis, QwtScaleDraw *draw);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void applyScale(const Nodes::widgetChartAxis &node);
    void applyTime(double length);
    void applyDiscret();
    /// A hand has given the axis back: it is as the node says again.
    void onReleased(QwtAxisId axis);
    void applyLook(const Nodes::widgetChartAxis &node);
    /// Labels tell the date where the time of day does not say which moment it is.
    void tellDates();
    /// As many major ticks as there is room for.
    void fitTicks();
    int roomPerTick() const;

    QPointer<MultiAxisPlot> m_plot;
    const QwtAxisId m_axis;
    const Nodes::NodeLink m_node;
    const bool m_isTime;
    bool m_isDiscret = false;
};

} // namespace Widgets
