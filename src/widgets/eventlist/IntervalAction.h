#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/eventlist/DayInterval.h"

#include <QAction>

namespace Widgets {

/// Key of a tool bar that tells an interval of days. GUI thread.
class WIDGETS_EXPORT IntervalAction : public QAction
{
    Q_OBJECT

public:
    explicit IntervalAction(QObject *parent = nullptr);

    const QDateTime &from() const { return m_interval.from; }
    const QDateTime &to() const { return m_interval.to; }
    const DayInterval &interval() const { return m_interval; }
    void setInterval(const QDateTime &from, const QDateTime &to);
    int getIntervalDays() const { return m_interval.days(); }

private:
    DayInterval m_interval;
};

} // namespace Widgets
