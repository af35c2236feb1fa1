#pragma once

#include "widgets/WidgetsExport.h"

#include <QTimer>
#include <QWidget>

class QLabel;
class QPushButton;

namespace Widgets {

class WrapLayout;

/// What an alarm list says of itself above its rows: how many there are and are shown, that a
/// filter hides what is urgent, that a flood is on; and the buttons that fold its panes out. GUI
/// thread.
class WIDGETS_EXPORT AlarmHeadline : public QWidget
{
    Q_OBJECT

public:
    /// What the line tells.
    struct Facts
    {
        int all = 0;
        int shown = 0;
        int waiting = 0;
        int hiddenUrgent = 0; ///< unacknowledged, of priority 1, and not shown
        int newAbove = 0;     ///< came above what is in sight
        bool isFiltered = false;
        int floodCount = -1; ///< alarms in ten minutes; below 0: no flood
        // Out of the list by somebody's doing, or by design.
        int shelved = 0;
        int suppressed = 0;
        int outOfService = 0;
    };

    explicit AlarmHeadline(QWidget *parent = nullptr);

    void setFacts(const Facts &facts);
    QPushButton &filterButton() const { return *m_filter; }
    QPushButton &detailsButton() const { return *m_details; }
    QPushButton &hiddenButton() const { return *m_hidden; }
    /// Makes one row of the controls the least width, unless it is wider than that.
    void setRoom(int width);

signals:
    /// The operator wants to see what the filter hides.
    void resetWanted();
    /// The operator wants to see the beginning of the list.
    void beginningWanted();

private:
    QPushButton *makeButton(const QString &text, const QString &name);
    /// Makes its text, too.
    QWidget *makeWarning();

    void watch();

    QLabel *m_stopped; ///< alarms that were watched are not any more
    QTimer m_watch;
    bool m_wasRunning = false;
    QLabel *m_flood;
    QLabel *m_warningText;
    QWidget *m_warning;
    WrapLayout *m_row;
    QLabel *m_counts;
    QPushButton *m_newAbove;
    QPushButton *m_details;
    QPushButton *m_hidden;
    QPushButton *m_filter;
};

} // namespace Widgets
