#include "widgets/elements/alarms/BlinkClock.h"

#include <QCoreApplication>
#include <QMetaMethod>
#include <QPointer>
#include <QTimerEvent>

namespace Widgets {

BlinkClock &BlinkClock::instance()
{
    static QPointer<BlinkClock> clock;
    if (!clock)
        clock = new BlinkClock(QCoreApplication::instance());
    return *clock;
}

void BlinkClock::connectNotify(const QMetaMethod &signal)
{
    if (signal == QMetaMethod::fromSignal(&BlinkClock::beat) && !m_timer.isActive())
        m_timer.start(HalfPeriod, this);
}

void BlinkClock::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return;
    if (!isSignalConnected(QMetaMethod::fromSignal(&BlinkClock::beat))) {
        m_timer.stop();
        m_isLit = true;
        return;
    }
    m_isLit = !m_isLit;
    emit beat(m_isLit);
}

} // namespace Widgets
