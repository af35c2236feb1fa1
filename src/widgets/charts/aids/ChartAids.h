#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>
#include <QPointer>

class QMenu;
class QPoint;
class QWidget;

namespace Widgets {

class ChartExport;
class ChartGroupManager;
class CursorPanel;
class EventMarks;
class Legend;
class PastPeriods;
class Plot;
class ToolBar;

/// What an operator has beside the curves of a chart: the table of both cursors, marks of events,
/// past periods laid over, and the menu of the chart with all this, export and the operator's own
/// trend. One per chart element, destroyed before its plot. GUI thread.
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

    CursorPanel *cursorPanel() const;
    EventMarks *marks() const { return m_marks; }
    PastPeriods *pastPeriods() const { return m_periods; }
    ChartExport *chartExport() const { return m_export; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void openMenu(const QPoint &place);
    void addCursors(QMenu &menu);
    void addPeriods(QMenu &menu);
    void addSignals(QMenu &menu);
    void askPeriod();
    void onUserChanged();
    void placeKey();

    QPointer<Plot> m_plot;
    QPointer<ChartGroupManager> m_manager;
    QWidget *m_element;
    QPointer<CursorPanel> m_panel;
    EventMarks *m_marks;
    PastPeriods *m_periods;
    ChartExport *m_export;
    QPointer<ToolBar> m_key; // opens the menu where there is no right mouse button
};

} // namespace Widgets
