#include "widgets/windows/desktop/IdleLogout.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/systemVisualization.h"
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

IdleLogout::IdleLogout(Nodes::systemAuthentication &users, const Nodes::NodeLink &visualization,
                       QObject *parent)
    : QObject(parent), m_users(users), m_visualization(visualization)
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

// Seconds; 0: never.
int IdleLogout::limit() const
{
    const auto *shown = dynamic_cast<Nodes::systemVisualization *>(m_visualization.GetNode());
    const int ofUsers = m_users.GetLogoutAfter();
    const int ofScreens = shown ? shown->GetIdleLogout() : 0;
    return ofUsers == 0 || ofScreens == 0 ? ofUsers + ofScreens : qMin(ofUsers, ofScreens);
}

// Input only moves a time stamp, not the timer: there are hundreds of mouse moves a second.
void IdleLogout::look()
{
    m_timer.stop();
    const int seconds = limit();
    if (seconds == 0 || m_users.GetCurrentUser().isEmpty())
        return;
    const Nodes::Timestamp idle = (now() - m_lastInput) / microsecondsInMs;
    const Nodes::Timestamp left = Nodes::Timestamp(seconds) * 1000 - idle;
    if (left > 0)
        m_timer.start(int(left));
    else
        m_users.Logout("нет действий оператора " + std::to_string(seconds) + " с");
}

} // namespace Widgets
