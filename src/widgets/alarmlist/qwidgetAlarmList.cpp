#include "widgets/alarmlist/qwidgetAlarmList.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/elements/alarms/AlarmBoard.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/events/ModelAlarms.h"
#include "widgets/events/TableAlarms.h"
#include "widgets/events/filter/AlarmList.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/visual/elements/widgetAlarmList.h"

#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include <utility>

namespace Widgets {

namespace {

constexpr int controlsHeight = 48;
constexpr int gap = 8;
constexpr int shortestPause = 100;  // ms
constexpr int checkInterval = 1000; // ms

bool standsBelow(const Nodes::ConfigNode *node, const Nodes::NodeLink &above)
{
    while (node && node->GetId() != above.GetNodeId())
        node = node->GetParent();
    return node != nullptr;
}

} // namespace

qwidgetAlarmList::qwidgetAlarmList(Nodes::widgetAlarmList *node, QWidget *parent,
                                   const SceneContextPtr &context)
    : QFrame(parent),
      IWidget(node, context),
      m_model(new ModelAlarms(this)),
      m_list(new AlarmList(*m_model, this)),
      m_table(new TableAlarms(this)),
      m_controls(new QWidget(this)),
      m_listNode(node)
{
    setMinimumSize(0, 0);
    ApplyDialogLook(*m_controls);
    buildButtons();
    m_model->readSettings(alarming());
    m_table->setAlarms(*m_model, *m_list);
    connect(m_table, &TableAlarms::selected, this, &qwidgetAlarmList::follow);
    connect(m_table, &TableAlarms::rowDoubleClicked, this, [this](const QModelIndex &index) {
        if (index.isValid() && m_listNode && m_listNode->HasAcknowledge())
            acknowledge({m_model->row(index.row()).occurrence()});
    });
    m_pause.setSingleShot(true);
    m_pause.setInterval(shortestPause);
    connect(&m_pause, &QTimer::timeout, this, &qwidgetAlarmList::takePending);
    m_check.setInterval(checkInterval);
    connect(&m_check, &QTimer::timeout, this, &qwidgetAlarmList::follow);
    m_binding.bind(this, node);
    qwidgetAlarmList::onUpdateProperties(nullptr);
}

qwidgetAlarmList::~qwidgetAlarmList() = default;

const PropertyBindings &qwidgetAlarmList::bindings() const
{
    using This = qwidgetAlarmList;
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<This>(Then::Repaint),
        PropertyRow::takes<&This::takeLook>(Then::Repaint, Prop::Background, Prop::BorderColor,
                                            Prop::BorderWidth, Prop::Disabled),
        PropertyRow::takes<&This::takeFilter>(Then::Repaint, Prop::Priority1, Prop::Priority2,
                                              Prop::Priority3, Prop::Priority4, Prop::Waiting,
                                              Prop::Active, Prop::Area, Prop::Source, Prop::Search),
        PropertyRow::takes<&This::takeButtons>(Then::Repaint, Prop::Acknowledge),
        // It is about all alarms.
        PropertyRow::only(Then::Nothing, Prop::Signal),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetAlarmList::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetAlarmList *node = m_listNode.get();
    if (node && takeOver(*node, property))
        update();
}

void qwidgetAlarmList::takeLook(const Nodes::widgetAlarmList &node)
{
    takeBackground(node);
    takeBorder(node);
    m_table->setEnabled(!node.isDisabled());
    m_controls->setEnabled(!node.isDisabled());
    layOut();
}

void qwidgetAlarmList::takeFilter(const Nodes::widgetAlarmList &node)
{
    AlarmFilter filter;
    for (int priority = 1; priority <= AlarmFilter::PriorityCount; ++priority)
        filter.priorities[std::size_t(priority - 1)] = node.ShowsPriority(priority);
    filter.states[AlarmFilter::Waiting] = node.ShowsWaiting();
    filter.states[AlarmFilter::Active] = node.ShowsActive();
    filter.states[AlarmFilter::Returned] = false;
    if (!node.GetArea().empty())
        filter.area = QString::fromStdString(node.GetArea());
    filter.text = QString::fromStdString(node.GetSearch());
    m_list->setFilter(filter);
    m_below = node.GetSource();
    if (isActive() && isRuntime())
        takeAll();
}

void qwidgetAlarmList::takeButtons(const Nodes::widgetAlarmList &node)
{
    m_all->setVisible(node.HasAcknowledge());
    m_one->setVisible(node.HasAcknowledge());
}

// The user may have changed.
void qwidgetAlarmList::onValueUpdated(Nodes::SignalValue /*value*/)
{
    follow();
}

void qwidgetAlarmList::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
    AlarmBoard &board = AlarmBoard::instance();
    disconnect(&board, nullptr, this, nullptr);
    m_check.stop();
    if (!on || !isRuntime() || context().isPreview())
        return;
    m_check.start();
    m_model->readSettings(alarming());
    connect(&board, &AlarmBoard::taken, this, &qwidgetAlarmList::take);
    takeAll();
}

Nodes::systemAlarming *qwidgetAlarmList::alarming() const
{
    const Nodes::systemCore *model = context().model();
    return model ? model->GetSystemAlarming() : nullptr;
}

bool qwidgetAlarmList::isMeant(const Nodes::BasicEvent &alarm) const
{
    const Nodes::ConfigNode *node = alarm.sourceNode.GetNode();
    if (m_below.isEmpty() || standsBelow(node, m_below))
        return true;
    const auto *watching = dynamic_cast<const Nodes::BasicAlarm *>(node);
    return watching && standsBelow(watching->GetSignal(), m_below);
}

void qwidgetAlarmList::take(const std::vector<Nodes::BasicEvent> &alarms)
{
    for (const Nodes::BasicEvent &alarm : alarms) {
        if (isMeant(alarm))
            m_pending.push_back(alarm);
    }
    if (!m_pause.isActive())
        takePending();
}

// A storm is sorted in some times a second, however many pieces it comes in.
void qwidgetAlarmList::takePending()
{
    if (m_pending.empty())
        return;
    m_pause.start();
    m_table->keepSight();
    if (m_model->take(std::exchange(m_pending, {})).isOrderChanged)
        m_list->updateSort();
    m_table->restoreSight();
    follow();
}

// What was over while nobody looked, or is not chosen any more, leaves.
void qwidgetAlarmList::takeAll()
{
    const auto &known = AlarmBoard::instance().alarms();
    std::vector<Nodes::BasicEvent> over;
    for (int number = 0; number < m_model->rowCount(); ++number) {
        const Nodes::BasicEvent &listed = m_model->row(number).event();
        if (known.contains(listed.sourceNode.GetNodeId()) && isMeant(listed))
            continue;
        over.push_back(listed);
        over.back().alarmState = Nodes::AlarmState::Normal;
    }
    m_pending.clear();
    (void)m_model->take(over);
    take({known.begin(), known.end()});
    takePending();
    m_list->updateSort();
    follow();
}

void qwidgetAlarmList::follow()
{
    const Nodes::systemAlarming *system = alarming();
    const bool isRunning = system && system->GetState() == Nodes::NodeState::Running;
    const bool mayAcknowledge = system && Nodes::CheckAccess(Nodes::PrivilegeAcknowledge, *system);
    const int count = m_list->rowCount();
    int left = 0;
    for (int row = 0; row < m_model->rowCount(); ++row)
        left += !m_model->row(row).isAcknowledged && m_list->shows(m_model->row(row));
    const bool isSelected = m_table->selectedRow().isValid();
    m_all->setEnabled(mayAcknowledge && left > 0);
    m_one->setEnabled(mayAcknowledge && isSelected);
    m_source->setEnabled(isSelected);
    m_count->setText(isRunning || !isActive() || !isRuntime()
                         ? QStringLiteral("Тревог: %1, неквитированных: %2").arg(count).arg(left)
                         : QStringLiteral("✕ Тревоги не отслеживаются"));
}

void qwidgetAlarmList::layOut()
{
    const int border = qMax(0, m_borderWidth);
    const QRect room = rect().adjusted(border, border, -border, -border);
    m_controls->setGeometry(room.left(), room.bottom() + 1 - controlsHeight, room.width(),
                            controlsHeight);
    m_table->setGeometry(room.adjusted(0, 0, 0, -controlsHeight - gap));
}

void qwidgetAlarmList::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    layOut();
}

void qwidgetAlarmList::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_backgroundColor);
    ElementPainting::drawBorder(painter, size(), m_borderWidth, m_borderColor);
}

bool qwidgetAlarmList::event(QEvent *event)
{
    return ElementTooltip::show(event, m_node.get()) || QFrame::event(event);
}

} // namespace Widgets
