#include "widgets/charts/plots/WaitBox.h"
#include "widgets/eventlist/EventLoader.h"
#include "widgets/eventlist/EventStatusBar.h"
#include "widgets/eventlist/WidgetEvent.h"
#include "widgets/eventlist/WidgetEventModel.h"
#include "widgets/eventlist/WidgetEventSortModel.h"
#include "widgets/eventlist/WidgetEventToolBar.h"
#include "widgets/eventlist/WidgetEventView.h"

#include "utils/convert/TimeConversions.h"

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

constexpr std::size_t mostBytes = std::size_t(512) * 1024 * 1024; // of rows and texts

unsigned long long secondsOf(double seconds)
{
    return seconds > 0 && std::isfinite(seconds) ? static_cast<unsigned long long>(seconds) : 0;
}

} // namespace

bool WidgetEvent::getLastHistory()
{
    return getHistory(double(m_toolBar->getFromDt().toSecsSinceEpoch()),
                      double(m_toolBar->getToDt().toSecsSinceEpoch()), true);
}

bool WidgetEvent::getHistory(double from, double to, bool isWaitShown)
{
    if (!isRuntime())
        return false;
    const Nodes::Result result = m_loader->ask(secondsOf(from), secondsOf(to));
    if (!result) {
        m_status->setNote(QStringLiteral("Журнал не прочитан: ") +
                          QString::fromStdString(result.GetResultTranslated()));
        return false;
    }
    m_status->setNote(QString());
    m_status->setReading(true);
    if (isWaitShown && isVisible())
        waitForAnswer();
    return true;
}

void WidgetEvent::waitForAnswer()
{
    if (m_waitBox->isRunning())
        return;
    const QPointer<WidgetEvent> alive(this);
    m_body->setEnabled(false);
    const int answer = m_waitBox->exec();
    if (!alive)
        return;
    m_body->setEnabled(true);
    if (answer != QDialog::Accepted && !m_loader->hasBegun())
        onCancelled();
}

void WidgetEvent::onGetHistoryCompleted(std::vector<Nodes::EventInfo> events)
{
    m_model->clear();
    m_status->setNew(0);
    append(events);
    if (m_toolBar->isTracking())
        m_view->showNewest();
    m_waitBox->accept();
    m_body->setEnabled(true);
}

void WidgetEvent::append(const std::vector<Nodes::EventInfo> &events)
{
    m_model->appendItems(events, m_list && !m_list->GetSources().empty());
    showCounts();
}

void WidgetEvent::onContinued(const std::vector<Nodes::EventInfo> &events)
{
    append(events);
    if (!isFull())
        return;
    m_loader->cancel();
    onEnded({}, true);
}

void WidgetEvent::onEnded(const Nodes::Result &result, bool isCut)
{
    m_status->setReading(false);
    m_waitBox->accept();
    m_body->setEnabled(true);
    if (!result) {
        m_status->setNote(QStringLiteral("Журнал прочитан не весь: ") +
                          QString::fromStdString(result.GetResultTranslated()));
    } else if (isCut) {
        const WidgetEventModel::Items &items = m_model->getItems();
        const auto oldest =
            std::min_element(items.begin(), items.end(),
                             [](const WidgetEventItem &left, const WidgetEventItem &right) {
                                 return left.time() < right.time();
                             });
        m_status->setNote(
            QStringLiteral("Показано не всё: событий до %1 в списке нет. Сократите интервал или "
                           "выберите источники.")
                .arg(oldest == items.end() ? QString() : Utils::timeText(oldest->time())));
    }
}

void WidgetEvent::onCancelled()
{
    m_loader->cancel();
    m_status->setReading(false);
    m_status->setNote(QStringLiteral("Чтение журнала прервано: показано не всё"));
}

bool WidgetEvent::isFull() const
{
    return m_model->bytes() > mostBytes ||
           (m_list && m_model->rowCount() >= m_list->GetMaximumRows());
}

void WidgetEvent::onEventsStored(std::vector<Nodes::EventInfo> events)
{
    const qint64 from = m_toolBar->getFromDt().toMSecsSinceEpoch();
    const qint64 to = m_toolBar->getToDt().toMSecsSinceEpoch();
    events.erase(
        std::remove_if(events.begin(), events.end(),
                       [from, to](const Nodes::EventInfo &info) {
                           const qint64 time =
                               Utils::toLocalTime(info.GetEvent().time).toMSecsSinceEpoch();
                           return time < from || time > to;
                       }),
        events.end());
    if (events.empty())
        return;
    const bool isSeen = m_toolBar->isTracking() || m_view->isAtNewest();
    const int before = m_sorting->rowCount();
    append(events);
    const int added = m_sorting->rowCount() - before;
    if (!m_toolBar->isTracking() && !isSeen)
        m_status->setNew(m_status->newCount() + added);
    if (isFull())
        schedule(); // room is made by reading the newest ones again
}

void WidgetEvent::onIntervalChanged()
{
    schedule();
}

void WidgetEvent::onTrackingChanged(bool isTracking)
{
    m_view->setTracking(isTracking);
    m_status->setNew(0);
    const QDateTime now = QDateTime::currentDateTime();
    const bool isPresent = now >= m_toolBar->getFromDt() && now <= m_toolBar->getToDt();
    if (isTracking && isActive() && !isPresent)
        m_toolBar->onCurrent();
}

// A day has ended.
void WidgetEvent::onClock()
{
    if (m_toolBar->isTracking() && isRuntime() &&
        QDateTime::currentDateTime() > m_toolBar->getToDt())
        m_toolBar->onCurrent();
}

void WidgetEvent::showCounts()
{
    m_status->setCounts(m_sorting->rowCount(), m_model->rowCount());
}

} // namespace Widgets
