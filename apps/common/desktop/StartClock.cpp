#include "apps/common/desktop/StartClock.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QLoggingCategory>
#include <QTimer>

#include <ctime>
#include <unistd.h>

namespace Host {

namespace {

Q_LOGGING_CATEGORY(logStart, "station.start", QtInfoMsg)

qint64 now()
{
    timespec time = {};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}

// The kernel's own record, so that loading the libraries counts too; its resolution is 10 ms.
qint64 processStart()
{
    constexpr int startTimeField = 19; // counted after the program's name
    QFile file(QStringLiteral("/proc/self/stat"));
    if (!file.open(QIODevice::ReadOnly))
        return now();
    const QByteArray line = file.readAll();
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    const qint64 ticks = fields.value(startTimeField).toLongLong();
    return ticks > 0 ? ticks * 1000 / sysconf(_SC_CLK_TCK) : now();
}

} // namespace

StartClock::StartClock(QObject *parent) : QObject(parent), m_processStart(processStart()) {}

qint64 StartClock::elapsed() const
{
    return now() - m_processStart;
}

void StartClock::mark(const char *stage) const
{
    qCInfo(logStart, "%s after %lld ms", stage, static_cast<long long>(elapsed()));
}

void StartClock::watchFirstFrame()
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool StartClock::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        QCoreApplication::instance()->removeEventFilter(this);
        // The timer fires once this round of painting is done and flushed.
        QTimer::singleShot(0, this, [this] {
            m_firstFrame = elapsed();
            mark("first frame painted");
        });
    }
    return QObject::eventFilter(watched, event);
}

} // namespace Host
