#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"

#include <QToolBar>

#include <vector>

namespace Nodes {
class widgetChart;
class widgetChartAxis;
class widgetChartGroup;
} // namespace Nodes

namespace Widgets {

/// Tool bar on the canvas of a chart: keys for fingers on a ground of their own, so that they are
/// read over whatever the curves do. As wide as its keys; whoever owns it places it. GUI thread.
class WIDGETS_EXPORT ToolBar : public QToolBar
{
    Q_OBJECT

public:
    /// The node is not owned and may go.
    ToolBar(Nodes::widgetChart *chart, QWidget *parent);

    /// Null: none.
    void setCurrentGroup(Nodes::widgetChartGroup *group);
    /// Takes over what the nodes say now.
    virtual void onUpdateProperties();

protected:
    Nodes::widgetChart *chart() const;
    Nodes::widgetChartGroup *group() const;
    /// Axes that the tool bar governs, in the order of the group.
    virtual std::vector<Nodes::widgetChartAxis *> axes() const { return {}; }
    std::vector<Nodes::widgetChartAxis *> groupAxes(bool areX) const;

    QAction *addKey(const QString &text, const QString &icon, const QString &tip);
    /// Takes the size that the keys need now.
    void fit();
    void changeEvent(QEvent *event) override;

private:
    Nodes::NodeLink m_chart;
    Nodes::NodeLink m_group;
};

} // namespace Widgets
