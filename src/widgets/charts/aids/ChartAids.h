#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>
#include <QPointer>

class QMenu;
class QPoint;
class QToolButton;
class QWidget;

namespace Widgets {

class ChartGroupManager;
class CursorPanel;
class Legend;
class Plot;

/// What an operator has beside the curves of a chart: the table of both cursors, and the menu of
/// the chart. One per chart element. GUI thread.
class WIDGETS_EXPORT ChartAids : public QObject
{
    Q_OBJECT

public:
    /// `element` holds plot and legend in a vertical layout, below which the table of the cursors
    /// is put. None is owned.
    ChartAids(Plot *plot, ChartGroupManager *manager, Legend *legend, QWidget *element);
    ~ChartAids() override;

    /// Fills the chart's menu as it is now, for that place of the canvas.
    void fillMenu(QMenu &menu, const QPoint &place);
    CursorPanel *cursorPanel() const { return m_panel; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void openMenu(const QPoint &place);
    void addCursors(QMenu &menu, const QPoint &place);
    void placeButton();

    QPointer<Plot> m_plot;
    QPointer<ChartGroupManager> m_manager;
    QPointer<Legend> m_legend;
    QWidget *m_element;
    QPointer<CursorPanel> m_panel;
    QPointer<QToolButton> m_button; // opens the menu where there is no right mouse button
};

} // namespace Widgets
