#include "widgets/charts/plots/WaitBox.h"
#include "widgets/eventlist/EventLoader.h"
#include "widgets/eventlist/EventStatusBar.h"
#include "widgets/eventlist/WidgetEvent.h"
#include "widgets/eventlist/WidgetEventModel.h"
#include "widgets/eventlist/WidgetEventSortModel.h"
#include "widgets/eventlist/WidgetEventToolBar.h"
#include "widgets/eventlist/WidgetEventView.h"
#include "widgets/eventlist/bar/EventFilterBar.h"

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
    m_choice = m_isTooLong ? wantedChoice() : Nodes::EventChoice();
    const Nodes::Result result = m_loader->ask(secondsOf(from), secondsOf(to), m_choice);
    if (!result) {
        m_status->setNote(QStringLiteral("Журнал не прочитан: ") +
                          QString::fromStdString(result.GetResultTranslated()));
        return false;
    }
    m_status->setNote(
        m_choice.isEmpty()
            ? QString()
            : QStringLiteral("Весь интервал в список не помещается: прочитано то, что "
                             "отобрано по уровню, типу, пользователю и тексту события."));
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
    const WidgetEventView::Place place = m_view->place();
    const unsigned long last = lastNumber();
    const int before = m_status->newCount();
    m_model->clear();
    append(events);
    if (m_view->restore(place) && !m_toolBar->isTracking())
        m_status->setNew(before + countBehind(last));
    else
        m_status->setNew(0);
    if (m_toolBar->isTracking())
        m_view->showNewest();
    m_waitBox->accept();
    m_body->setEnabled(true);
}

unsigned long WidgetEvent::lastNumber() const
{
    unsigned long last = 0;
    for (const WidgetEventItem &item : m_model->getItems())
        last = std::max(last, item.id());
    return last;
}

int WidgetEvent::countBehind(unsigned long last) const
{
    const WidgetEventModel::Items &items = m_model->getItems();
    int count = 0;
    for (std::size_t row = 0; row < items.size(); ++row)
        count += items[row].id() > last && m_sorting->rowOf(int(row)) >= 0 ? 1 : 0;
    return count;
}

void WidgetEvent::append(const std::vector<Nodes::EventInfo> &events)
{
    m_model->appendItems(events, m_list && !m_list->GetSources().empty());
    showCounts();
}

void WidgetEvent::onContinued(const std::vector<Nodes::EventInfo> &events)
{
    append(events);
    if (!isReadingFull())
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
        m_isTooLong = true;
        if (wantedChoice() != m_choice)
            schedule();
        const WidgetEventModel::Items &items = m_model->getItems();
        const auto oldest =
            std::min_element(items.begin(), items.end(),
                             [](const WidgetEventItem &left, const WidgetEventItem &right) {
                                 return left.time() < right.time();
                             });
        m_status->setNote(
            QStringLiteral("Показано не всё: событий до %1 в списке нет. Сократите интервал или "
                           "отберите источники, уровни, типы, пользователей, текст.")
                .arg(oldest == items.end() ? QString() : Utils::timeText(oldest->time())));
    }
}

void WidgetEvent::onCancelled()
{
    m_loader->cancel();
    m_status->setReading(false);
    m_status->setNote(QStringLiteral("Чтение журнала прервано: показано не всё"));
}

// What comes while it is shown has room then, as with the rows.
bool WidgetEvent::isReadingFull() const
{
    return m_model->bytes() > mostBytes / 10 * 9 || isFull();
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
    const int before = m_sorting->rowCount();
    append(events);
    const int added = m_sorting->rowCount() - before;
    if (!m_toolBar->isTracking() && !m_view->isAtNewest()) // what was read keeps its place
        m_status->setNew(m_status->newCount() + added);
    if (isFull())
        schedule(); // room is made by reading the newest ones again
}

void WidgetEvent::onScrolled()
{
    if (m_status->newCount() > 0 && m_view->isAtNewest())
        m_status->setNew(0);
}

void WidgetEvent::onIntervalChanged()
{
    m_isTooLong = false;
    schedule();
}

void WidgetEvent::onSourcesChanged()
{
    m_isTooLong = false;
    showCounts();
    schedule();
}

Nodes::EventChoice WidgetEvent::wantedChoice() const
{
    const EventRowFilter filter = m_bar->filter();
    Nodes::EventChoice choice{filter.levels, filter.types, {}, filter.text.toStdString()};
    for (const QString &user : filter.users)
        choice.users.push_back(user.toStdString());
    return choice;
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
    m_status->setCounts(m_sorting->rowCount(), m_model->rowCount(),
                        m_list ? int(m_list->GetSources().size()) : 0);
}

} // namespace Widgets
