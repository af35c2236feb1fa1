#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/model/links/NodeLink.h"
#include "utils/relay/NodeRelay.h"
#include "utils/relay/WatchedNode.h"

#include <QList>
#include <QObject>

#include <map>
#include <memory>
#include <vector>

namespace Nodes {
class widgetChartGroup;
} // namespace Nodes

namespace Widgets {

class ISerie;

/// Groups of series of a chart: which one is shown, and the series objects of those that were. The
/// series of a group are made when it is first shown and live until the group or the manager goes
/// or its children change. GUI thread.
class WIDGETS_EXPORT ChartGroupManager : public QObject
{
    Q_OBJECT

public:
    /// The node is not owned; null gives no groups.
    explicit ChartGroupManager(Nodes::widgetChart *chart, QObject *parent = nullptr);
    ~ChartGroupManager() override;

    /// Null once the node has gone.
    Nodes::widgetChart *chart() const { return m_chart.get(); }
    /// Null while there is none, and when it has gone.
    Nodes::widgetChartGroup *group() const;
    /// The one shown already: nothing is made or told anew. Null: none.
    void setCurrentGroup(Nodes::widgetChartGroup *group);

    /// Of the current group, in the order of the tree.
    const std::vector<ISerie *> &series() const;
    /// Those of them that the plot of that number shows.
    QList<ISerie *> seriesOf(int plotNumber) const;
    /// Whether that pointer, which may lead nowhere, is one of them.
    bool has(const ISerie *serie) const;

signals:
    /// Another group is current, or the series of this one are others now.
    void groupChanged();
    /// The present series are about to be deleted.
    void seriesAboutToGo();
    /// A property of the group or of an axis or zone of it changed.
    void groupUpdated();

private:
    std::vector<ISerie *> make(const Nodes::widgetChartGroup &group);
    void watch(Nodes::widgetChartGroup &group);
    void onChildrenChanged();
    void rebuild();
    void onGone(QObject *serie);

    Utils::WatchedNode<Nodes::widgetChart> m_chart;
    Nodes::NodeLink m_group;
    std::map<unsigned long, std::vector<ISerie *>> m_series; // by group; owned as children
    const std::vector<ISerie *> m_none;
    bool m_isChanging = false;                                // a rebuild is on its way
    std::vector<std::unique_ptr<Utils::NodeRelay>> m_watches; // group, axes
};

} // namespace Widgets
