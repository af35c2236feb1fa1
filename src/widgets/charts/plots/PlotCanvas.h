#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/QwtAxisId.h"

#include <qwt_plot_canvas.h>

class QToolButton;

namespace Nodes {
class widgetChart;
class widgetChartGroup;
} // namespace Nodes

namespace Widgets {

class Plot;
class ToolBar;
class ToolBarChart;

/// What the curves are drawn on, with the tool bars over it: those of its chart's kind. GUI thread.
class WIDGETS_EXPORT PlotCanvas : public QwtPlotCanvas
{
    Q_OBJECT

public:
    PlotCanvas(Nodes::widgetChart *node, Plot *plot);

    /// Each null where the kind of chart has none.
    ToolBar *tbAxisX() const { return m_tbAxisX; }
    ToolBar *tbAxisY() const { return m_tbAxisY; }
    ToolBarChart *tbChart() const { return m_tbChart; }
    /// Of the corridor chart: tells the length of its slices.
    QToolButton *sliceButton() const { return m_slice; }
    void setTextSlice(const QString &text);

    void setTracking(bool on);
    bool tracking() const;
    void setAutoscale(bool on);
    void setCurrentGroup(Nodes::widgetChartGroup *group);
    void onUpdateProperties();
    void setVisibleToolBar(bool isVisible);
    bool isToolBarVisible() const { return m_areToolBarsVisible; }
    void updateToolBarGeometry();
    void updateLenghtXTitle();

public slots:
    void updateAutoScaleX(bool on);
    void updateAutoScaleY(bool on);
    /// A hand has taken that axis or given it back: its tool bar tells whether all axes of its
    /// direction scale themselves still. The others stay as they are.
    void showAutoScale(QwtAxisId axis);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeTimeBar(Nodes::widgetChart *node);
    void setAutoScale(bool areX, bool on);

    Plot *m_plot;
    ToolBar *m_tbAxisX = nullptr;
    ToolBar *m_tbAxisY = nullptr;
    ToolBarChart *m_tbChart = nullptr;
    QToolButton *m_slice = nullptr;
    bool m_areToolBarsVisible = true;
};

} // namespace Widgets
