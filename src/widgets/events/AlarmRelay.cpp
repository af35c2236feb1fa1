#include "widgets/events/AlarmRelay.h"

#include "nodes/alarms/engine/AlarmFeed.h"
#include "nodes/alarms/systemAlarming.h"
#include "utils/relay/RelayDispatcher.h"
#include "utils/relay/RelayTarget.h"

#include <utility>

namespace Widgets {

namespace {

// Sorting a batch into a list of 10,000 takes a fraction of what a display may stand still. What a
// batch costs hardly depends on its size: in a flood a pause lets the next one fill.
constexpr std::size_t batchSize = 400;
constexpr int pause = 20; // ms

} // namespace

class AlarmRelay::Target : public Utils::RelayTarget
{
public:
    AlarmRelay *relay = nullptr; // GUI thread; null when that is gone

protected:
    void deliver() override
    {
        if (relay)
            relay->wish();
    }
};

AlarmRelay::AlarmRelay(Nodes::systemAlarming &alarming, QObject *parent)
    : QObject(parent), m_alarming(alarming), m_target(std::make_shared<Target>())
{
    Utils::RelayDispatcher::instance(); // made on this thread
    m_target->relay = this;
    m_pause.setSingleShot(true);
    m_pause.setTimerType(Qt::PreciseTimer);
    m_pause.setInterval(pause);
    connect(&m_pause, &QTimer::timeout, this, &AlarmRelay::onPaused);
    m_feed = alarming.OpenFeed([target = m_target] { target->request(); });
    m_target->request();
}

AlarmRelay::~AlarmRelay()
{
    m_target->relay = nullptr;
}

// The first alarm after a quiet time is taken at once.
void AlarmRelay::wish()
{
    if (m_pause.isActive())
        m_isWished = true;
    else
        take();
}

void AlarmRelay::onPaused()
{
    if (std::exchange(m_isWished, false))
        take();
}

void AlarmRelay::take()
{
    const Nodes::AlarmFeed::Batch batch = m_feed->Take(batchSize);
    m_isWished = m_isWished || batch.hasMore;
    m_pause.start(); // taking may enter a loop of its own
    // The station's end is no reason to call its alarms over.
    if (batch.isAnew && m_alarming.GetState() == Nodes::NodeState::Running) {
        m_isAnew = true;
        m_earlier += std::exchange(m_active, {});
    }
    for (const Nodes::BasicEvent &alarm : batch.alarms) {
        if (alarm.alarmState == Nodes::AlarmState::Normal)
            m_active.remove(alarm.sourceNode.GetNodeId());
        else
            m_active.insert(alarm.sourceNode.GetNodeId());
    }
    if (!batch.alarms.empty())
        emit arrived(batch.alarms);
    if (!batch.hasMore && std::exchange(m_isAnew, false))
        emit forgotten(std::exchange(m_earlier, {}) - m_active);
}

} // namespace Widgets
