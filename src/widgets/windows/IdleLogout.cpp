#include "widgets/windows/IdleLogout.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/values/Clock.h"

#include <QCoreApplication>
#include <QEvent>

namespace Widgets {

namespace {

constexpr Nodes::Timestamp microsecondsInMs = 1000;

Nodes::Timestamp now()
{
    return Nodes::Clock::Current().Steady();
}

bool isInput(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
        return event.spontaneous(); // the program's own events are no operator
    default:
        return false;
    }
}

} // namespace

IdleLogout::IdleLogout(Nodes::systemAuthentication &users, QObject *parent)
    : QObject(parent), m_users(users)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &IdleLogout::look);
    m_connection = users.ConnectUserChanged([this](const Nodes::NodeLink &) { start(); });
    QCoreApplication::instance()->installEventFilter(this);
    start();
}

bool IdleLogout::eventFilter(QObject *, QEvent *event)
{
    if (isInput(*event))
        m_lastInput = now();
    return false;
}

void IdleLogout::start()
{
    m_lastInput = now();
    look();
}

// Input only moves a time stamp, not the timer: there are hundreds of mouse moves a second.
void IdleLogout::look()
{
    m_timer.stop();
    const int limit = m_users.GetLogoutAfter();
    if (limit == 0 || m_users.GetCurrentUser().isEmpty())
        return;
    const Nodes::Timestamp idle = (now() - m_lastInput) / microsecondsInMs;
    const Nodes::Timestamp left = Nodes::Timestamp(limit) * 1000 - idle;
    if (left > 0)
        m_timer.start(int(left));
    else
        m_users.Logout("нет действий оператора " + std::to_string(limit) + " с");
}

} // namespace Widgets
