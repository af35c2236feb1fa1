#include "widgets/events/AlarmDesk.h"

#include "widgets/actions/kinds/qactionAlarm.h"
#include "widgets/elements/alarms/AlarmBoard.h"
#include "widgets/elements/binding/AlarmWatch.h"
#include "widgets/events/AlarmRelay.h"
#include "widgets/events/AlarmWindow.h"

#include <utility>

namespace Widgets {

AlarmDesk::AlarmDesk(Nodes::systemAlarming *alarming)
{
    if (!alarming)
        return;
    m_relay = std::make_unique<AlarmRelay>(*alarming);
    connect(m_relay.get(), &AlarmRelay::arrived, this, &AlarmDesk::take);
    connect(m_relay.get(), &AlarmRelay::forgotten, this, [this](const QSet<unsigned long> &ids) {
        if (m_window)
            m_window->forget(ids);
        AlarmBoard::instance().forget(ids);
    });
}

AlarmDesk::~AlarmDesk()
{
    AlarmBoard::instance().clear();
}

AlarmWindow *AlarmDesk::window()
{
    if (!m_window)
        m_window = std::make_unique<AlarmWindow>();
    return m_window.get();
}

void AlarmDesk::take(const std::vector<Nodes::BasicEvent> &alarms)
{
    window()->ReceiveAlarms(alarms);
    AlarmBoard::instance().take(alarms);
    AlarmWatch::tell(alarms);
    emit taken(alarms);
}

std::unique_ptr<qBasicAction> AlarmDesk::makeAction(Nodes::BasicEvent alarm) const
{
    return std::make_unique<qactionAlarm>(std::move(alarm));
}

} // namespace Widgets
