#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"
#include "utils/relay/WatchedNode.h"

#include <QTableView>

namespace Nodes {
class widgetEventList;
}

namespace Widgets {

class WidgetEventSortModel;

/// Table of events. What the operator reads stays where it is when rows come, unless new events are
/// followed. GUI thread.
class WIDGETS_EXPORT WidgetEventView : public QTableView
{
    Q_OBJECT

public:
    WidgetEventView(Nodes::widgetEventList *node, WidgetEventSortModel *sorting,
                    QWidget *parent = nullptr);

    /// Takes columns, font and sizes of the node.
    void updateProperties();
    /// New events are brought into sight.
    void setTracking(bool isTracking);
    /// To where the newest event stands.
    void showNewest();
    /// Whether rows that come now are seen without moving what stands there.
    bool isAtNewest() const;

    /// What the operator looks at, by the journal's numbers: they outlive a list that is read anew.
    struct Place
    {
        unsigned long top = 0;     ///< event on top; 0: the newest, or none
        int offset = 0;            ///< pixels of it that are above
        unsigned long current = 0; ///< event in front
    };
    Place place() const;
    /// False when the event on top is not there: the newest are shown.
    bool restore(const Place &place);

    /// Widths, order, visibility of the columns and the order of the rows, as chosen.
    QByteArray columnState() const;
    /// False when it is none of these columns.
    bool restoreColumnState(const QByteArray &state);

    /// The rows selected, as lines of text in their order, columns apart by tabs.
    QString selectedText() const;

signals:
    /// The operator wants more of that row: a double click, Enter.
    void activatedRow(int row);
    /// A right click or a long press.
    void menuAsked(int row, const QPoint &globalPlace);
    void copyAsked();
    void currentRowChanged(int row);
    void columnsArranged();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    void takeColumns();
    void onHeaderMenu(const QPoint &place);
    void onSorted(int column, Qt::SortOrder order);
    void keepPlace();
    void restorePlace();
    void stopPress();

    Utils::WatchedNode<Nodes::widgetEventList> m_node;
    WidgetEventSortModel *m_sorting;
    bool m_isTracking = false;
    bool m_isTakingColumns = false;
    int m_anchor = -1;      // row of the source that is on top
    int m_anchorOffset = 0; // pixels of it that are above
    int m_selected = -1;    // row of the source, over a reset
    int m_press = 0;        // timer of a finger held
    QPoint m_pressed;
};

} // namespace Widgets
