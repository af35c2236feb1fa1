#include "widgets/eventlist/WidgetEvent.h"

#include "widgets/charts/elements/ChartCover.h"
#include "widgets/charts/plots/WaitBox.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/eventlist/EventCommands.h"
#include "widgets/eventlist/EventDetails.h"
#include "widgets/eventlist/EventListLook.h"
#include "widgets/eventlist/EventListStore.h"
#include "widgets/eventlist/EventLoader.h"
#include "widgets/eventlist/EventStatusBar.h"
#include "widgets/eventlist/WidgetEventModel.h"
#include "widgets/eventlist/WidgetEventSortModel.h"
#include "widgets/eventlist/WidgetEventToolBar.h"
#include "widgets/eventlist/WidgetEventView.h"
#include "widgets/eventlist/bar/EventFilterBar.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/systemCore.h"
#include "utils/convert/TimeConversions.h"
#include "utils/convert/ValueConversions.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QScrollBar>

namespace Widgets {

namespace {

constexpr int clockTick = 5000; // ms
constexpr int keepDelay = 1000; // ms

WidgetEventSortModel *sorted(Nodes::widgetEventList *node, WidgetEventModel *model, QObject *owner)
{
    auto *sorting = new WidgetEventSortModel(node, owner);
    sorting->setSourceModel(model);
    return sorting;
}

} // namespace

WidgetEvent::WidgetEvent(Nodes::widgetEventList *node, QWidget *parent,
                         const SceneContextPtr &context)
    : QWidget(parent),
      IWidget(node, context),
      m_list(node),
      m_model(new WidgetEventModel(node, this)),
      m_sorting(sorted(node, m_model, this)),
      m_loader(new EventLoader(node, this)),
      m_body(new QWidget(this)),
      m_toolBar(new WidgetEventToolBar(node, m_body, context)),
      m_bar(new EventFilterBar(m_body)),
      m_view(new WidgetEventView(node, m_sorting, m_body)),
      m_details(new EventDetails(m_body)),
      m_status(new EventStatusBar(m_body)),
      m_commands(new EventCommands(m_view, m_sorting, context, this)),
      m_cover(new ChartCover(this)),
      m_waitBox(new WaitBox(this))
{
    build();
    connectParts();
    m_binding.bind(this, node);
    if (!node)
        return;
    setGeometry(Utils::NRectToQRect(node->GetGeometry()));
    (void)takeOver(*node, nullptr);
}

WidgetEvent::~WidgetEvent() = default;

void WidgetEvent::connectParts()
{
    m_scheduled.setSingleShot(true);
    m_clock.setInterval(clockTick);
    m_keeping.setSingleShot(true);
    m_keeping.setInterval(keepDelay);
    connect(&m_scheduled, &QTimer::timeout, this, &WidgetEvent::onScheduled);
    connect(&m_clock, &QTimer::timeout, this, &WidgetEvent::onClock);
    connect(m_toolBar, &WidgetEventToolBar::intervalChanged, this, &WidgetEvent::onIntervalChanged);
    connect(m_toolBar, &WidgetEventToolBar::filterChanged, this, [this] {
        onSourcesChanged();
        m_keeping.start();
    });
    connect(m_view->verticalScrollBar(), &QScrollBar::valueChanged, this, &WidgetEvent::onScrolled);
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
    connect(m_bar, &EventFilterBar::changed, this, &WidgetEvent::takeFilter);
    connect(m_bar, &EventFilterBar::usersAsked, this,
            [this] { m_bar->setUsers(m_model->users()); });
    connect(m_bar, &EventFilterBar::detailsToggled, this, &WidgetEvent::setDetailsShown);
    connect(m_bar, &EventFilterBar::exportAsked, m_commands, &EventCommands::askExport);
    connect(m_commands, &EventCommands::detailsAsked, this,
            [this] { m_bar->setDetailsShown(true); });
    connect(m_view, &WidgetEventView::currentRowChanged, this, &WidgetEvent::showDetails);
    connect(m_view, &WidgetEventView::columnsArranged, &m_keeping, qOverload<>(&QTimer::start));
    connect(&m_keeping, &QTimer::timeout, this, &WidgetEvent::keep);
}

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
    column->addWidget(m_bar);
    column->addWidget(m_view, 1);
    column->addWidget(m_details);
    column->addWidget(m_status);
    m_details->hide();
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
        m_userConnection = {};
        m_clock.stop();
        m_scheduled.stop();
        if (m_keeping.isActive())
            keep();
        m_loader->cancel();
        m_status->setReading(false);
        m_isOwed = true;
        return;
    }
    m_clock.start();
    watchUser();
    restore();
    if (m_toolBar->isTracking())
        m_toolBar->onCurrent();
    schedule();
}

void WidgetEvent::takeFilter()
{
    m_sorting->setFilter(m_bar->filter());
    showCounts();
    m_keeping.start();
    if (m_isTooLong && wantedChoice() != m_choice)
        schedule(); // there is room for others of the interval now
}

void WidgetEvent::setDetailsShown(bool isShown)
{
    m_details->setVisible(isShown);
    showDetails();
    m_keeping.start();
}

void WidgetEvent::showDetails()
{
    if (!m_bar->isDetailsShown())
        return;
    const int row = m_view->currentIndex().row();
    if (row < 0 || row >= m_sorting->rowCount())
        return m_details->clear();
    const WidgetEventItem &item = m_sorting->item(row);
    m_details->setEvent(item.event(), item.isCut(), context().model());
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
