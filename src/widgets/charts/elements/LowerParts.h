#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>

class QWidget;

namespace Widgets {

class CursorPanel;
class Legend;
class ToolBarChart;

/// Shares what is below the plot of a chart: the plot keeps PlotShare of the element's height,
/// legend and table of the cursors get at most the rest, which the tabs leave, and scroll. Of
/// these two the one that was called for last is there, and the legend again when the table goes.
/// GUI thread.
class WIDGETS_EXPORT LowerParts : public QObject
{
    Q_OBJECT

public:
    static constexpr double PlotShare = 0.55;

    /// All are parts of the element, which owns this.
    LowerParts(QWidget *element, Legend *legend, CursorPanel *panel, QWidget *tabs,
               ToolBarChart *keys);

    /// By the operator's key or the project.
    void setLegendWanted(bool isWanted);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void onPanelShown(bool isShown);
    void fit();

    QWidget *m_element;
    Legend *m_legend;
    CursorPanel *m_panel;
    QWidget *m_tabs;
    ToolBarChart *m_keys;
    bool m_isLegendWanted = true;
};

} // namespace Widgets
