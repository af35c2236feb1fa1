#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"

#include <QDateTime>

class QCalendarWidget;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace Widgets {

/// Asks for an interval of whole days: the first and the last one, in two calendars. GUI thread.
class WIDGETS_EXPORT DateIntervalWidget : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "dateInterval";

    explicit DateIntervalWidget(QWidget *parent = nullptr);

    /// The days that these times are of.
    void setInterval(const QDateTime &from, const QDateTime &to);
    /// First millisecond of the first day.
    QDateTime from() const;
    /// Last millisecond of the last day.
    QDateTime to() const;

private:
    QCalendarWidget *makeCalendar(const QString &name);
    QWidget *makeShortcuts();
    void addShortcut(QVBoxLayout *column, const QString &text, int firstDay, int lastDay);
    void check();

    QCalendarWidget *m_from;
    QCalendarWidget *m_to;
    QLabel *m_length;
    QPushButton *m_accept;
};

} // namespace Widgets
