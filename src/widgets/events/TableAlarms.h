#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/alarms/alarmColumn.h"

#include <QTableView>
#include <QVector>

namespace Widgets {

class AlarmList;
class ModelAlarms;

/// Table of the alarms: what waits for acknowledgement first, then the newest. A touch of a header
/// sorts by that column. Rows are high enough for fingers.
class WIDGETS_EXPORT TableAlarms : public QTableView
{
    Q_OBJECT

public:
    explicit TableAlarms(QWidget *parent = nullptr);

    /// Shows the model through its list; both outlive the table.
    void setAlarms(ModelAlarms &model, AlarmList &sorting);
    /// Selected row in the source model; invalid without one.
    QModelIndex selectedRow() const;
    /// Width at which no column is cut off.
    int headerWidth() const;
    /// Revision of the list that was painted last: what an operator can have seen. The present one
    /// while nothing is on a display.
    unsigned seenRevision() const;
    /// Alarms that came to wait above what is seen since the beginning of the list was in sight.
    int newAbove() const;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;

public slots:
    /// Around a change of the rows: those in sight stay where they stand, unless the list stands at
    /// its beginning. There what comes is seen at once.
    void keepSight();
    void restoreSight();

signals:
    /// The first column of a row was double-clicked; index of the source model. The row is the one
    /// that the first of both clicks met, wherever it is now; none when it is gone, or its alarm
    /// came anew in between.
    void rowDoubleClicked(const QModelIndex &source);
    /// Another row is selected, or none.
    void selected();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    /// A row as it was painted.
    struct Shown
    {
        int top;
        int bottom;
        unsigned long alarm;
        unsigned long occurrence;
    };
    /// What the first click of two met.
    struct Press
    {
        QPoint place;
        unsigned long time = 0;  // ms; 0: there was none
        unsigned long alarm = 0; // 0: no row
        unsigned long occurrence = 0;
    };

    Shown shown(const QModelIndex &index) const;
    Press pressAt(const QMouseEvent &event) const;
    /// Whether the event is the second click after that press.
    bool follows(const QMouseEvent &event) const;
    void select(unsigned long alarm);
    unsigned long selectedAlarm() const;
    QVector<Shown> inSight() const;
    void keepPlace();
    void restorePlace();
    void sortBy(int column, Qt::SortOrder order);
    void onHeaderClicked(int column);
    void takeColumns();
    /// Narrows columns that have no configured width, so that the text comes into sight.
    void fitColumns();

    ModelAlarms *m_model = nullptr;
    AlarmList *m_sorting = nullptr;
    int m_sortKind = Nodes::alarmColumn::Group;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    QVector<int> m_widths;  // of the columns where there is room for all
    unsigned m_painted = 0; // revision
    bool m_isPainted = false;
    QVector<Shown> m_shown; // painted last, from the top
    Press m_pressed;
    bool m_isLate = false; // what a timer does
    // Over a reset of the model:
    unsigned long m_selectedAlarm = 0;
    QPoint m_scrolled;

    unsigned long m_keptAlarm = 0; // selected before a change of the rows
    QVector<Shown> m_sight;        // over a change of the rows; empty at the beginning of the list
    unsigned m_beginningSeen = 0;  // revision
};

} // namespace Widgets
