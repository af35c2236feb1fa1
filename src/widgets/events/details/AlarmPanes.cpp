#include "widgets/events/details/AlarmPanes.h"

#include "widgets/charts/menus/TouchMenu.h"
#include "widgets/events/ModelAlarms.h"
#include "widgets/events/ModelManager.h"
#include "widgets/events/TableAlarms.h"
#include "widgets/events/details/AlarmCommands.h"
#include "widgets/events/details/AlarmDetails.h"
#include "widgets/events/hidden/AlarmHiddenPane.h"
#include "widgets/events/hidden/ModelHidden.h"

#include "nodes/values/Clock.h"

#include <QVBoxLayout>

namespace Widgets {

namespace {

constexpr int second = 1000; // ms

} // namespace

AlarmPanes::AlarmPanes(ModelManager &manager, TableAlarms &table, QWidget *parent)
    : QWidget(parent),
      m_manager(manager),
      m_table(table),
      m_details(new AlarmDetails(this)),
      m_hidden(new AlarmHiddenPane(manager.hidden(), this))
{
    auto *column = new QVBoxLayout(this); // not stacked: each takes the room that it needs itself
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_details);
    column->addWidget(m_hidden);
    m_clock.setInterval(second);
    connect(&m_clock, &QTimer::timeout, this, &AlarmPanes::tick);
    connect(&table, &TableAlarms::selected, this, &AlarmPanes::follow);
    connect(m_details, &AlarmDetails::wanted, this, &AlarmPanes::run);
    connect(m_hidden, &AlarmHiddenPane::backWanted, this,
            [this](const Nodes::BasicEvent &alarm) { run(AlarmCommands::TakeBack, alarm); });
    table.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&table, &QWidget::customContextMenuRequested, this, &AlarmPanes::openMenu);
    setPane(None);
}

void AlarmPanes::setPane(Pane pane)
{
    m_pane = pane;
    setVisible(pane != None);
    if (pane == None) {
        m_clock.stop();
    } else {
        m_details->setVisible(pane == Details);
        m_hidden->setVisible(pane == Hidden);
        m_clock.start();
        follow();
        tick();
    }
    emit paneChanged();
}

void AlarmPanes::follow()
{
    if (m_pane != Details)
        return;
    m_details->setListEmpty(m_manager.model().rowCount() == 0);
    const std::optional<Nodes::BasicEvent> shown = selected();
    if (m_details->alarm() != shown)
        m_details->setAlarm(shown);
}

// As it stands now, which may be later than what was told of it last.
std::optional<Nodes::BasicEvent> AlarmPanes::selected() const
{
    const QModelIndex row = m_table.selectedRow();
    if (!row.isValid())
        return std::nullopt;
    const AlarmRow &alarm = m_manager.model().row(row.row());
    Nodes::BasicEvent shown = alarm.event();
    shown.alarmState = alarm.state();
    return shown;
}

void AlarmPanes::run(int command, const Nodes::BasicEvent &alarm)
{
    if (!m_commands)
        m_commands = new AlarmCommands(m_manager, *window());
    m_commands->run(AlarmCommands::Command(command), alarm);
}

// `place`: of the rows. What cannot be done stays in sight, grey, as in the details.
void AlarmPanes::openMenu(const QPoint &place)
{
    const int row = m_table.rowAt(place.y());
    if (row < 0)
        return;
    m_table.selectRow(row);
    const std::optional<Nodes::BasicEvent> alarm = selected();
    if (!alarm)
        return;
    auto *menu = new TouchMenu(&m_table);
    for (const AlarmCommands::Row &offered : AlarmCommands::rows()) {
        QAction *action = menu->addAction(QString::fromUtf8(offered.text));
        action->setEnabled(AlarmCommands::obstacle(offered.command, *alarm).isEmpty());
        connect(action, &QAction::triggered, this,
                [this, command = offered.command, alarm = *alarm] { run(command, alarm); });
    }
    menu->openAt(m_table.viewport()->mapToGlobal(place));
}

void AlarmPanes::tick()
{
    const Nodes::Timestamp now = Nodes::Clock::Current().Now();
    m_details->setNow(now);
    m_manager.hidden().setNow(now);
}

void AlarmPanes::setRoom(int width)
{
    m_details->setRoom(width);
    updateGeometry();
}

} // namespace Widgets
