#pragma once

#include "widgets/WidgetsExport.h"

#include <QTableView>
#include <QVector>

namespace Utils {
class SortingModel;
}

namespace Widgets {

class ModelAlarms;

/// Table of the alarms: what waits for acknowledgement first, then the newest. A touch of a header
/// sorts by that column. Rows are high enough for fingers.
class WIDGETS_EXPORT TableAlarms : public QTableView
{
    Q_OBJECT

public:
    explicit TableAlarms(QWidget *parent = nullptr);

    /// Shows the model through the proxy; both outlive the table.
    void setAlarms(ModelAlarms &model, Utils::SortingModel &sorting);
    /// Selected row in the source model; invalid without one.
    QModelIndex selectedRow() const;
    /// Width at which no column is cut off.
    int headerWidth() const;
    /// Revision of the list that was painted last: what an operator can have seen. The present one
    /// while nothing is on a display.
    unsigned seenRevision() const;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;

signals:
    /// The first column of a row was double-clicked; index of the source model. The row is the one
    /// that the first of both clicks met, wherever it is now; none when it is gone, or its alarm
    /// came anew in between.
    void rowDoubleClicked(const QModelIndex &source);

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
    void keepPlace();
    void restorePlace();
    void sortBy(int column, Qt::SortOrder order);
    void onHeaderClicked(int column);
    void takeColumns();
    /// Narrows columns that have no configured width, so that the text comes into sight.
    void fitColumns();

    ModelAlarms *m_model = nullptr;
    Utils::SortingModel *m_sorting = nullptr;
    QVector<int> m_widths;  // of the columns where there is room for all
    unsigned m_painted = 0; // revision
    bool m_isPainted = false;
    QVector<Shown> m_shown; // painted last, from the top
    Press m_pressed;
    bool m_isLate = false; // what a timer does
    // Over a reset of the model:
    unsigned long m_selectedAlarm = 0;
    QPoint m_scrolled;
};

} // namespace Widgets
