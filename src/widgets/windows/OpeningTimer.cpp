#include "widgets/windows/OpeningTimer.h"

#include "widgets/windows/WindowBasic.h"

#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/windowComposed.h"

#include <QLoggingCategory>
#include <QPaintEvent>
#include <QTimer>

#include <algorithm>

namespace Widgets {

namespace {

Q_LOGGING_CATEGORY(windowOpen, "station.window.open")

constexpr int pollInterval = 20; // milliseconds

qint64 microsecondsSince(OpeningTimer::Clock::time_point begun)
{
    const auto passed = OpeningTimer::Clock::now() - begun;
    return std::chrono::duration_cast<std::chrono::microseconds>(passed).count();
}

double milliseconds(qint64 microseconds)
{
    return double(microseconds) / 1000;
}

} // namespace

OpeningTimer::OpeningTimer(WindowBasic &window, Clock::time_point triggered)
    : QObject(&window), m_window(window), m_triggered(triggered)
{
    window.viewport()->installEventFilter(this);
}

OpeningTimer *OpeningTimer::restart(WindowBasic &window, Clock::time_point triggered)
{
    auto *timer = new OpeningTimer(window, triggered);
    if (OpeningTimer *previous = window.findChild<OpeningTimer *>(QStringLiteral("opening"),
                                                                  Qt::FindDirectChildrenOnly)) {
        timer->m_buildTime = previous->m_buildTime;
        delete previous;
    }
    timer->setObjectName(QStringLiteral("opening"));
    return timer;
}

OpeningTimer *OpeningTimer::startBuilt(WindowBasic &window, Clock::time_point begun)
{
    OpeningTimer *timer = restart(window, begun);
    timer->m_buildTime = timer->elapsed();
    return timer;
}

qint64 OpeningTimer::elapsed() const
{
    return microsecondsSince(m_triggered);
}

// What is painted reaches the screen when this event has been handled: the time is taken after it.
bool OpeningTimer::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Paint)
        return false;
    const QRect whole = m_window.viewport()->rect();
    if (static_cast<QPaintEvent *>(event)->region().boundingRect().contains(whole)) {
        m_window.viewport()->removeEventFilter(this);
        QTimer::singleShot(0, this, &OpeningTimer::onPainted);
    }
    return false;
}

void OpeningTimer::onPainted()
{
    const qint64 time = elapsed();
    emit painted(time);
    qCInfo(windowOpen, "%s: built in %.1f ms, painted after %.1f ms",
           qPrintable(m_window.getStrTitle()), milliseconds(m_buildTime), milliseconds(time));
    collectElements();
    pollValues();
}

void OpeningTimer::collectElements()
{
    const Nodes::ConfigNode *shown = m_window.getNode();
    if (const auto *composed = dynamic_cast<const Nodes::windowComposed *>(shown))
        shown = composed->GetCurrentComposition();
    if (shown)
        m_withoutValue = shown->GetNodes(true);
}

void OpeningTimer::pollValues()
{
    const auto hasNothingToWaitFor = [](const Nodes::NodeLink &link) {
        const auto *element = dynamic_cast<const Nodes::BasicWidget *>(link.GetNode());
        return !element || element->GetSignalLink().isEmpty() || !element->GetValue().IsEmpty();
    };
    m_withoutValue.erase(
        std::remove_if(m_withoutValue.begin(), m_withoutValue.end(), hasNothingToWaitFor),
        m_withoutValue.end());
    const qint64 time = elapsed();
    if (!m_withoutValue.empty() && time < qint64(GiveUpAfter) * 1000) {
        QTimer::singleShot(pollInterval, this, &OpeningTimer::pollValues);
        return;
    }
    const int missing = int(m_withoutValue.size());
    if (missing == 0)
        qCInfo(windowOpen, "%s: all values live after %.1f ms", qPrintable(m_window.getStrTitle()),
               milliseconds(time));
    else
        qCWarning(windowOpen,
                  "%s: %d elements have no value after %.1f ms; is their source running?",
                  qPrintable(m_window.getStrTitle()), missing, milliseconds(time));
    emit valuesLive(time, missing);
    deleteLater();
}

} // namespace Widgets
