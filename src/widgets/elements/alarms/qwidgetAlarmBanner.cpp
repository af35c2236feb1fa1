#include "widgets/elements/alarms/qwidgetAlarmBanner.h"

#include "widgets/context/ActionSink.h"
#include "widgets/elements/alarms/AlarmBoard.h"
#include "widgets/elements/alarms/BlinkClock.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/painting/ElementPainting.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"
#include "nodes/visual/elements/widgetAlarmBanner.h"

#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace Widgets {

namespace {

constexpr int refreshDelay = 100;              // ms
constexpr int checkInterval = 5000;            // ms
constexpr Nodes::Timestamp patience = 5000000; // microseconds an alarm may take to get here

} // namespace

qwidgetAlarmBanner::qwidgetAlarmBanner(Nodes::widgetAlarmBanner *node, QWidget *parent,
                                       const SceneContextPtr &context)
    : QWidget(parent), IWidget(node, context), m_banner(node)
{
    setAttribute(Qt::WA_NoSystemBackground);
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(refreshDelay);
    connect(&m_refresh, &QTimer::timeout, this, &qwidgetAlarmBanner::refresh);
    m_check.setInterval(checkInterval);
    connect(&m_check, &QTimer::timeout, this, &qwidgetAlarmBanner::check);
    m_binding.bind(this, node);
    qwidgetAlarmBanner::onUpdateProperties(nullptr);
}

qwidgetAlarmBanner::~qwidgetAlarmBanner() = default;

const PropertyBindings &qwidgetAlarmBanner::bindings() const
{
    using This = qwidgetAlarmBanner;
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<This>(Then::Repaint),
        PropertyRow::takes<&This::takeLook>(Then::Repaint, Prop::Background, Prop::BorderColor,
                                            Prop::BorderWidth),
        PropertyRow::only(Then::Value, Prop::Acknowledge, Prop::Area, Prop::Disabled),
        // It is about all alarms.
        PropertyRow::only(Then::Nothing, Prop::Signal),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetAlarmBanner::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetAlarmBanner *banner = m_banner.get();
    if (banner && takeOver(*banner, property))
        update();
}

void qwidgetAlarmBanner::takeLook(const Nodes::widgetAlarmBanner &banner)
{
    takeBackground(banner);
    takeBorder(banner);
}

// Also when the user changes.
void qwidgetAlarmBanner::onValueUpdated(Nodes::SignalValue /*value*/)
{
    refresh();
}

void qwidgetAlarmBanner::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
    AlarmBoard &board = AlarmBoard::instance();
    if (!on || !isRuntime() || context().isPreview()) {
        disconnect(&board, nullptr, this, nullptr);
        m_check.stop();
        return;
    }
    connect(&board, &AlarmBoard::changed, this, &qwidgetAlarmBanner::refreshSoon);
    connect(&board, &AlarmBoard::viewChanged, this, &qwidgetAlarmBanner::refresh);
    m_check.start();
    refresh();
}

void qwidgetAlarmBanner::refreshSoon()
{
    if (!m_refresh.isActive())
        m_refresh.start();
}

BannerFacts qwidgetAlarmBanner::present() const
{
    const Nodes::widgetAlarmBanner *banner = m_banner.get();
    const Nodes::systemCore *model = context().model();
    const Nodes::systemAlarming *alarming = model ? model->GetSystemAlarming() : nullptr;
    BannerFacts facts;
    if (!banner || !isActive() || !isRuntime() || context().isPreview())
        return facts;
    const AlarmBoard &board = AlarmBoard::instance();
    if (alarming && alarming->GetState() == Nodes::NodeState::Running)
        facts = BannerFacts::of(board.alarms(), banner->GetArea());
    else
        facts.state = alarming ? BannerFacts::Off : BannerFacts::Absent;
    if (facts.isTrouble())
        return facts;
    if (m_isLate)
        facts.state = BannerFacts::Late;
    const Nodes::AlarmFlood flood = alarming->GetFlood();
    facts.flood = flood.isFlood ? flood.raisedInTenMinutes : -1;
    facts.isMuted = board.isMuted();
    facts.isFiltered = !board.filter().isEmpty();
    facts.mayAcknowledge = mayAcknowledge(facts);
    return facts;
}

bool qwidgetAlarmBanner::mayAcknowledge(const BannerFacts &facts) const
{
    const Nodes::ConfigNode *alarm = facts.top.sourceNode.GetNode();
    return alarm && !m_banner->isDisabled() &&
           Nodes::CheckAccess(Nodes::PrivilegeAcknowledge, *alarm);
}

void qwidgetAlarmBanner::refresh()
{
    BannerFacts facts = present();
    if (facts == m_facts)
        return;
    m_facts = std::move(facts);
    const auto beat = &BlinkClock::beat;
    if (m_facts.blinks())
        connect(&BlinkClock::instance(), beat, this, &qwidgetAlarmBanner::blink,
                Qt::UniqueConnection);
    else
        disconnect(&BlinkClock::instance(), beat, this, &qwidgetAlarmBanner::blink);
    update();
}

void qwidgetAlarmBanner::blink()
{
    update(painter().sign());
}

void qwidgetAlarmBanner::check()
{
    const Nodes::systemCore *model = context().model();
    const Nodes::systemAlarming *alarming = model ? model->GetSystemAlarming() : nullptr;
    m_isLate = alarming && alarming->GetState() == Nodes::NodeState::Running &&
               BannerFacts::isLate(alarming->GetActiveAlarms(), AlarmBoard::instance().alarms(),
                                   Nodes::Clock::Current().Now() - patience);
    refresh();
}

BannerPainter qwidgetAlarmBanner::painter() const
{
    return {m_facts, size(), m_banner && m_banner->HasAcknowledge()};
}

void qwidgetAlarmBanner::paintEvent(QPaintEvent *)
{
    QPainter onto(this);
    onto.fillRect(rect(), m_backgroundColor);
    if (!m_banner)
        return;
    onto.save();
    painter().draw(onto, BlinkClock::instance().isLit(), m_pressedPart == BannerPainter::Button);
    onto.restore();
    ElementPainting::drawBorder(onto, size(), m_borderWidth, m_borderColor);
    if (m_banner->isDisabled())
        ElementPainting::drawDisabledCover(onto, rect());
}

void qwidgetAlarmBanner::mousePressEvent(QMouseEvent *event)
{
    if (!isRuntime() || event->button() != Qt::LeftButton)
        return event->ignore();
    m_pressed = m_facts;
    m_pressedPart = painter().partAt(event->pos());
    update();
}

void qwidgetAlarmBanner::mouseReleaseEvent(QMouseEvent *event)
{
    const BannerPainter::Part part = std::exchange(m_pressedPart, BannerPainter::None);
    update();
    const BannerPainter shown(m_pressed, size(), m_banner && m_banner->HasAcknowledge());
    if (!isRuntime() || part == BannerPainter::None || shown.partAt(event->pos()) != part)
        return;
    if (part == BannerPainter::Button)
        acknowledge(m_pressed.occurrence());
    else if (part == BannerPainter::Text)
        context().actions().jump(m_pressed.top.sourceNode, this);
    else
        context().actions().showAlarms();
}

// The subsystem checks the rights and writes the journal.
void qwidgetAlarmBanner::acknowledge(const Nodes::AlarmOccurrence &alarm)
{
    const Nodes::systemCore *model = context().model();
    Nodes::systemAlarming *alarming = model ? model->GetSystemAlarming() : nullptr;
    if (!alarming || context().isPreview() || m_banner->isDisabled())
        return;
    if (alarm.alarm.isEmpty())
        return context().actions().notify(QStringLiteral("Квитировать нечего: ни одна тревога не "
                                                         "ждёт"));
    if (!m_pressed.mayAcknowledge)
        return context().actions().notify(
            QStringLiteral("Тревога не квитирована. Нет права: квитирование. Войдите под именем, у "
                           "которого оно есть"));
    const Nodes::Result result = alarming->Acknowledge(alarm.alarm, alarm.occurrence);
    // Nothing to acknowledge: somebody else was faster, or it came anew and is shown.
    if (!result && result != Nodes::Result::NotFound && result != Nodes::Result::Refused)
        context().actions().notify(QStringLiteral("Тревога не квитирована: ") +
                                   QString::fromStdString(result.GetResultTranslated()));
}

bool qwidgetAlarmBanner::event(QEvent *event)
{
    return ElementTooltip::show(event, m_node.get()) || QWidget::event(event);
}

} // namespace Widgets
