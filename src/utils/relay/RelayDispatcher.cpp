#include "utils/relay/RelayDispatcher.h"

#include "utils/convert/MetaTypes.h"
#include "utils/relay/RelayTarget.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QThread>
#include <QTimerEvent>

namespace Utils {

namespace {

constexpr int longestPause = 50; // ms; values stay live even when a round is very slow

QEvent::Type wakeUpType()
{
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

} // namespace

RelayDispatcher::RelayDispatcher()
{
    registerMetaTypes();
}

RelayDispatcher &RelayDispatcher::instance()
{
    // Never destroyed: publishers may still post while the process is ending.
    static auto *dispatcher = new RelayDispatcher;
    return *dispatcher;
}

bool RelayDispatcher::isOwnThread() const
{
    return QThread::currentThread() == thread();
}

int RelayDispatcher::waiting() const
{
    const std::lock_guard lock(m_mutex);
    return int(m_waiting.size() + m_round.size());
}

void RelayDispatcher::post(std::shared_ptr<RelayTarget> target)
{
    {
        const std::lock_guard lock(m_mutex);
        m_waiting.push_back(std::move(target));
        if (m_isAwake)
            return;
        m_isAwake = true;
    }
    QCoreApplication::postEvent(this, new QEvent(wakeUpType()));
}

bool RelayDispatcher::event(QEvent *event)
{
    if (event->type() != wakeUpType())
        return QObject::event(event);
    deliverRound();
    return true;
}

void RelayDispatcher::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_pause.timerId())
        return;
    {
        const std::lock_guard lock(m_mutex);
        if (m_waiting.empty() && m_round.empty()) {
            m_pause.stop();
            m_isAwake = false;
            return;
        }
    }
    deliverRound();
}

void RelayDispatcher::deliverRound()
{
    // The timer runs before the first call: a target that opens a dialog enters an event loop of
    // its own, and the rest of the round is then delivered from there.
    m_pause.start(m_pauseLength, Qt::PreciseTimer, this);
    {
        const std::lock_guard lock(m_mutex);
        m_round.insert(m_round.end(), std::make_move_iterator(m_waiting.begin()),
                       std::make_move_iterator(m_waiting.end()));
        m_waiting.clear();
    }
    QElapsedTimer time;
    time.start();
    while (!m_round.empty()) {
        const std::shared_ptr<RelayTarget> target = std::move(m_round.front());
        m_round.pop_front();
        target->answer();
    }
    m_pauseLength = static_cast<int>(qBound<qint64>(1, time.elapsed(), longestPause));
}

} // namespace Utils
