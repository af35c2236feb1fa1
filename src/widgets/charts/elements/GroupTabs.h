#pragma once

#include <QTabBar>

namespace Nodes {
class BasicNode;
class widgetChart;
} // namespace Nodes

namespace Widgets {

/// Names of a chart's groups, a tab each, below the chart. Shown only where there are several.
/// GUI thread.
class GroupTabs : public QTabBar
{
    Q_OBJECT

public:
    explicit GroupTabs(QWidget *parent);

    /// Takes the groups over and marks that one. Tells nobody.
    void setGroups(const Nodes::widgetChart &chart, const Nodes::BasicNode *current);

signals:
    /// The operator chose it.
    void chosen(int index);

protected:
    QSize tabSizeHint(int index) const override;
};

} // namespace Widgets
