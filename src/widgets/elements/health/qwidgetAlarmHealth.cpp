#include "widgets/elements/health/qwidgetAlarmHealth.h"

#include "widgets/context/ActionSink.h"
#include "widgets/dialogs/DialogLook.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/health/WhatIfDialog.h"
#include "widgets/elements/painting/ElementPainting.h"

#include "nodes/visual/elements/widgetAlarmHealth.h"

#include <QPainter>

namespace Widgets {

qwidgetAlarmHealth::qwidgetAlarmHealth(Nodes::widgetAlarmHealth *node, QWidget *parent,
                                       const SceneContextPtr &context)
    : QFrame(parent), IWidget(node, context), m_page(new HealthPage(this)), m_health(node)
{
    setMinimumSize(0, 0);
    ApplyDialogLook(*m_page);
    m_page->nuisances()->setTests(
        [this](const Nodes::NodeLink &alarm) { return this->context().actions().canJump(alarm); },
        &WhatIfDialog::canOpen);
    connect(m_page->nuisances(), &NuisanceList::tryPressed, this,
            [this](const Nodes::NodeLink &alarm) { WhatIfDialog::open(alarm, this); });
    connect(m_page->nuisances(), &NuisanceList::jumpPressed, this,
            [this](const Nodes::NodeLink &alarm) { this->context().actions().jump(alarm, this); });
    m_binding.bind(this, node);
    qwidgetAlarmHealth::onUpdateProperties(nullptr);
}

qwidgetAlarmHealth::~qwidgetAlarmHealth() = default;

const PropertyBindings &qwidgetAlarmHealth::bindings() const
{
    using This = qwidgetAlarmHealth;
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<This>(Then::Repaint),
        PropertyRow::takes<&This::takeLook>(Then::Repaint, Prop::Background, Prop::BorderColor,
                                            Prop::BorderWidth, Prop::Disabled),
        PropertyRow::takes<&This::takeSettings>(Then::Repaint, Prop::Period, Prop::Refresh,
                                                Prop::Fleeting, Prop::Standing),
        // It is about all alarms.
        PropertyRow::only(Then::Nothing, Prop::Signal),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetAlarmHealth::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetAlarmHealth *health = m_health.get();
    if (health && takeOver(*health, property))
        update();
}

void qwidgetAlarmHealth::onValueUpdated(Nodes::SignalValue) {}

void qwidgetAlarmHealth::takeLook(const Nodes::widgetAlarmHealth &health)
{
    takeBackground(health);
    takeBorder(health);
    QPalette colors = m_page->palette();
    colors.setColor(QPalette::Window, m_backgroundColor);
    m_page->setPalette(colors);
    m_page->setEnabled(!health.isDisabled());
    placePage();
}

void qwidgetAlarmHealth::takeSettings(const Nodes::widgetAlarmHealth &health)
{
    constexpr Nodes::Timestamp second = 1000000;
    HealthPage::Settings settings;
    settings.period.kind = HealthPeriod::Kind(health.GetPeriod());
    settings.refreshMinutes = health.GetRefresh();
    settings.fleeting = health.GetFleeting() * second;
    settings.standing = health.GetStanding() * 3600 * second;
    if (settings != m_settings)
        m_page->setSettings(settings); // else it is the operator's
    m_settings = settings;
    if (isActive() && isRuntime())
        m_page->setCore(context().model());
}

void qwidgetAlarmHealth::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
    if (!on || !isRuntime())
        m_page->setCore(nullptr);
}

void qwidgetAlarmHealth::placePage()
{
    const int border = qMax(0, m_borderWidth);
    m_page->setGeometry(rect().adjusted(border, border, -border, -border));
}

void qwidgetAlarmHealth::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    placePage();
}

void qwidgetAlarmHealth::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_backgroundColor);
    ElementPainting::drawBorder(painter, size(), m_borderWidth, m_borderColor);
}

bool qwidgetAlarmHealth::event(QEvent *event)
{
    return ElementTooltip::show(event, m_node.get()) || QFrame::event(event);
}

} // namespace Widgets
