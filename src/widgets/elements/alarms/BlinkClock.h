#pragma once

#include "widgets/WidgetsExport.h"

#include <QBasicTimer>
#include <QObject>

namespace Widgets {

/// One beat for all that blinks, so that a display full of alarms blinks as one: half a second lit,
/// half a second not. Runs only while somebody is connected to `beat`. GUI thread.
class WIDGETS_EXPORT BlinkClock : public QObject
{
    Q_OBJECT

public:
    static constexpr int HalfPeriod = 500; ///< ms

    static BlinkClock &instance();

    /// True while nothing blinks.
    bool isLit() const { return m_isLit; }
    bool isRunning() const { return m_timer.isActive(); }

signals:
    void beat(bool isLit);

protected:
    void connectNotify(const QMetaMethod &signal) override;
    void timerEvent(QTimerEvent *event) override;

private:
    explicit BlinkClock(QObject *parent) : QObject(parent) {}

    QBasicTimer m_timer;
    bool m_isLit = true;
};

} // namespace Widgets
