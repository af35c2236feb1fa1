#pragma once

#include "widgets/charts/axes/ToolBar.h"

namespace Widgets {

/// What a press on the canvas does, and whether the legend is there. "Тренд" moves the curves,
/// "Визир" reads them; one of the two is always latched.
class WIDGETS_EXPORT ToolBarChart : public ToolBar
{
    Q_OBJECT

public:
    ToolBarChart(Nodes::widgetChart *chart, QWidget *parent);

    bool isVisir() const;
    /// Also tells of it when it was so already.
    void setVisir(bool on);
    /// Tells of a change only.
    void setLegend(bool on);

signals:
    void changeVisibleLegend(bool on);
    void changeVizir(bool on);

private:
    void onTrend();

    QAction *m_trend;
    QAction *m_legend;
    QAction *m_visir; // stays the last one: it is found by that
};

} // namespace Widgets
