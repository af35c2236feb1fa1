#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ElementBinding.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/values/Connection.h"

#include <QFrame>
#include <QGraphicsProxyWidget>
#include <QPointer>

namespace Widgets {

class ChartAids;
class ChartCover;
class ChartGroupManager;
class GroupTabs;
class Legend;
class LowerParts;
class Plot;
struct PlotXAxisRangeDetails;

/// Element of a chart: its plot and below it the legend. What is shown is one of the chart's groups
/// at a time; where there are several, tabs below choose. GUI thread.
class WIDGETS_EXPORT qwidgetChartBasic : public QFrame, public IWidget
{
    Q_OBJECT

public:
    /// Takes the plot over.
    qwidgetChartBasic(Nodes::widgetChart *node, Plot *plot, QWidget *parent,
                      const SceneContextPtr &context = SceneContext::process());
    ~qwidgetChartBasic() override;

    Nodes::widgetChart *chart() const { return m_chart.get(); }
    Plot *plot() const { return m_plot; }
    Legend *legend() const { return m_legend; }
    ChartGroupManager *groupManager() const { return m_manager; }
    /// Item whose cursor follows that of what is pointed at; may be null.
    void setProxy(QGraphicsProxyWidget *proxy);

    /// A window of the past instead of the present.
    void setArchiverMode(bool on, const PlotXAxisRangeDetails &range);
    bool isArchiverMode() const { return m_isArchiverMode; }
    void setVisibleToolBar(bool isVisible);

    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS
public slots:
    /// One out of range is left alone.
    void setCurrentGroup(int index);
    void onSetSymbol(int type);

signals:
    void currentGroupChanged(int index);
    void symbolsChanged(int type);

protected:
    /// To be called by the constructor of the kind.
    void initialize();
    void onActive(bool on) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;

private:
    void takeGroup(const Nodes::widgetChart &chart);
    void takeLook(const Nodes::widgetChart &chart);
    void takeSymbol(const Nodes::widgetChart &chart);
    void takeParts(const Nodes::widgetChart &chart);
    void takeColumns(const Nodes::widgetChart &chart);
    void onVisibleLegend(bool isVisible);
    void onTabChosen(int index);
    void onGroupsChanged();
    void watchUser();
    void handCursorOver(const QPoint &position);

    Plot *m_plot;
    Legend *m_legend;
    QPointer<QGraphicsProxyWidget> m_proxy;
    Utils::WatchedNode<Nodes::widgetChart> m_chart;
    bool m_isArchiverMode = false;
    bool m_hasBegun = false; // was active before
    ChartGroupManager *m_manager;
    GroupTabs *m_tabs;
    ChartCover *m_cover;
    ChartAids *m_aids = nullptr;
    LowerParts *m_lower = nullptr;
    Nodes::ScopedConnection m_groupConnection;
    Nodes::ScopedConnection m_symbolsConnection;
    Nodes::ScopedConnection m_userConnection;
    ElementBinding m_binding;
    Utils::NodeRelay m_groups;
};

} // namespace Widgets
