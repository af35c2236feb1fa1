#include "widgets/eventlist/WidgetEvent.h"

#include "widgets/charts/elements/ChartCover.h"
#include "widgets/charts/plots/WaitBox.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/eventlist/EventListLook.h"
#include "widgets/eventlist/EventLoader.h"
#include "widgets/eventlist/EventStatusBar.h"
#include "widgets/eventlist/WidgetEventModel.h"
#include "widgets/eventlist/WidgetEventSortModel.h"
#include "widgets/eventlist/WidgetEventToolBar.h"
#include "widgets/eventlist/WidgetEventView.h"

#include "utils/convert/TimeConversions.h"
#include "utils/convert/ValueConversions.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QKeyEvent>

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

constexpr int clockTick = 5000;                                   // ms
constexpr std::size_t mostBytes = std::size_t(512) * 1024 * 1024; // of rows and texts

unsigned long long secondsOf(double seconds)
{
    return seconds > 0 && std::isfinite(seconds) ? static_cast<unsigned long long>(seconds) : 0;
}

} // namespace

WidgetEvent::WidgetEvent(Nodes::widgetEventList *node, QWidget *parent,
                         const SceneContextPtr &context)
    : QWidget(parent),
      IWidget(node, context),
      m_list(node),
      m_model(new WidgetEventModel(node, this)),
      m_sorting(new WidgetEventSortModel(node, this)),
      m_loader(new EventLoader(node, this)),
      m_body(new QWidget(this)),
      m_toolBar(new WidgetEventToolBar(node, m_body, context)),
      m_view(nullptr),
      m_status(new EventStatusBar(m_body)),
      m_cover(new ChartCover(this)),
      m_waitBox(new WaitBox(this))
{
    m_sorting->setSourceModel(m_model);
    m_view = new WidgetEventView(node, m_sorting, m_body);
    build();
    m_scheduled.setSingleShot(true);
    m_clock.setInterval(clockTick);
    connect(&m_scheduled, &QTimer::timeout, this, &WidgetEvent::onScheduled);
    connect(&m_clock, &QTimer::timeout, this, &WidgetEvent::onClock);
    connect(m_toolBar, &WidgetEventToolBar::intervalChanged, this, &WidgetEvent::onIntervalChanged);
    connect(m_toolBar, &WidgetEventToolBar::filterChanged, this, &WidgetEvent::onIntervalChanged);
    connect(m_toolBar, &WidgetEventToolBar::trackingChanged, this, &WidgetEvent::onTrackingChanged);
    connect(m_loader, &EventLoader::begun, this, &WidgetEvent::onGetHistoryCompleted);
    connect(m_loader, &EventLoader::continued, this, &WidgetEvent::onContinued);
    connect(m_loader, &EventLoader::ended, this, &WidgetEvent::onEnded);
    connect(m_loader, &EventLoader::stored, this, &WidgetEvent::onEventsStored);
    connect(m_status, &EventStatusBar::cancelled, this, &WidgetEvent::onCancelled);
    connect(m_status, &EventStatusBar::newestAsked, this, [this] {
        m_view->showNewest();
        m_status->setNew(0);
    });
    m_binding.bind(this, node);
    if (!node)
        return;
    setGeometry(Utils::NRectToQRect(node->GetGeometry()));
    (void)takeOver(*node, nullptr);
}

WidgetEvent::~WidgetEvent() = default;

void WidgetEvent::build()
{
    auto *around = new QVBoxLayout(this);
    around->setContentsMargins(0, 0, 0, 0);
    around->addWidget(m_body);
    m_body->setStyleSheet(EventListLook::partsStyle());
    setAutoFillBackground(true);
    setMinimumSize(0, 0);
    auto *column = new QVBoxLayout(m_body);
    column->setContentsMargins(EventListLook::Gap, EventListLook::Gap, EventListLook::Gap,
                               EventListLook::Gap);
    column->setSpacing(EventListLook::Gap);
    column->addWidget(m_toolBar);
    column->addWidget(m_view, 1);
    column->addWidget(m_status);
}

const PropertyBindings &WidgetEvent::bindings() const
{
    using Prop = Nodes::widgetEventList::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<WidgetEvent>(Then::Repaint),
        PropertyRow::takes<&WidgetEvent::takeTable>(Then::Repaint, Prop::ScrollBarSize,
                                                    Prop::FontSize),
        PropertyRow::takes<&WidgetEvent::takeInterval>(
            Then::Repaint, Prop::Length, Prop::LengthUnit, Prop::Tracking, Prop::IconSize),
        PropertyRow::takes<&WidgetEvent::takeLook>(
            Then::Repaint, Prop::Background, Prop::BorderColor, Prop::BorderWidth, Prop::Disabled),
        // The next request takes them.
        PropertyRow::only(Then::Nothing, Prop::Sources, Prop::MaximumRows, Prop::Signal),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void WidgetEvent::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetEventList *node = m_list.get();
    // What the operator has chosen is not taken back when the list is shown again.
    if (!node || (!property && isRuntime()))
        return;
    if (takeOver(*node, property))
        update();
}

void WidgetEvent::onValueUpdated(Nodes::SignalValue) {}

void WidgetEvent::takeInterval(const Nodes::widgetEventList &)
{
    m_toolBar->updateProperties();
}

void WidgetEvent::takeTable(const Nodes::widgetEventList &)
{
    m_view->updateProperties();
    // Now, so that nothing is painted in between.
    QEvent request(QEvent::LayoutRequest);
    QCoreApplication::sendEvent(m_view, &request);
}

void WidgetEvent::takeLook(const Nodes::widgetEventList &node)
{
    takeBackground(node);
    takeBorder(node);
    QPalette colors = palette();
    colors.setColor(QPalette::Window, m_backgroundColor);
    setPalette(colors);
    m_cover->setLook(m_borderWidth, m_borderColor, node.isDisabled());
}

void WidgetEvent::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
    if (!on) {
        m_clock.stop();
        m_scheduled.stop();
        m_loader->cancel();
        m_status->setReading(false);
        m_isOwed = true;
        return;
    }
    m_clock.start();
    if (m_toolBar->isTracking())
        m_toolBar->onCurrent();
    schedule();
}

void WidgetEvent::schedule()
{
    if (isActive() && isRuntime())
        m_scheduled.start(0);
}

// A loop of its own must not run inside of what opens the window.
void WidgetEvent::onScheduled()
{
    m_isOwed = false;
    (void)getLastHistory();
}

void WidgetEvent::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_isOwed)
        schedule();
}

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

bool WidgetEvent::event(QEvent *event)
{
    return ElementTooltip::show(event, m_node.get()) || QWidget::event(event);
}

void WidgetEvent::keyPressEvent(QKeyEvent *event)
{
    if (isRuntime())
        QWidget::keyPressEvent(event);
}

void WidgetEvent::keyReleaseEvent(QKeyEvent *event)
{
    if (isRuntime())
        QWidget::keyReleaseEvent(event);
}

} // namespace Widgets
