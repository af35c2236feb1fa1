#include "nodes/drivers/modbus/ModbusPoller.h"

#include "nodes/values/Clock.h"

#include <algorithm>
#include <chrono>

namespace Nodes {

namespace {

Timestamp steadyNow()
{
    return Clock::Current().Steady();
}

constexpr Timestamp msToUs = 1000;

} // namespace

ModbusPoller::ModbusPoller(ModbusSettings settings, std::vector<PolledGroup> groups,
                           Listener listener)
    : m_settings(std::move(settings)),
      m_listener(std::move(listener)),
      m_connection(m_settings.unit),
      m_backoff(m_settings.reconnectMinimum, m_settings.reconnectMaximum, unsigned(steadyNow()))
{
    for (PolledGroup &group : groups) {
        const PollSchedule schedule(group.period * msToUs, steadyNow());
        m_groups.push_back({std::move(group), schedule, Result()});
    }
}

ModbusPoller::~ModbusPoller()
{
    Stop();
}

void ModbusPoller::Start()
{
    m_thread = std::thread([this] { run(); });
}

void ModbusPoller::Stop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
        m_acceptsWrites = false;
    }
    m_wake.notify_all();
    m_connection.Interrupt();
    if (m_thread.joinable())
        m_thread.join();
}

void ModbusPoller::run()
{
    while (!m_isStopping) {
        if (m_link == Link::Connected)
            serve();
        else
            connect();
    }
    m_connection.Close();
}

void ModbusPoller::connect()
{
    // Only an answer shows that the device is there: gateways accept connections for absent ones.
    const Result answered = poll(m_groups.front());
    if (m_isStopping)
        return;
    if (answered) {
        setConnected();
        return;
    }
    lose(answered);
    waitUntil(steadyNow() + m_backoff.Next() * msToUs);
}

void ModbusPoller::serve()
{
    QueuedWrite write;
    if (takeWrite(write))
        send(write);
    if (m_link != Link::Connected || m_isStopping)
        return;
    Group &group = nextDue();
    if (!group.schedule.IsDue(steadyNow())) {
        waitUntil(group.schedule.GetNext());
        return;
    }
    const Result polled = poll(group);
    group.schedule.Advance(steadyNow());
    if (!polled)
        lose(polled);
}

ModbusPoller::Group &ModbusPoller::nextDue()
{
    // The one that waits longest goes first, so a fast group cannot starve a slow one.
    return *std::min_element(m_groups.begin(), m_groups.end(), [](const Group &a, const Group &b) {
        return a.schedule.GetNext() < b.schedule.GetNext();
    });
}

/// Success when the device answered, be it with an objection to this group.
Result ModbusPoller::poll(Group &group)
{
    Result result(Result::NotConnected);
    const int attempts = m_link == Link::Lost ? 1 : std::max(m_settings.retries, 1);
    for (int attempt = 0; attempt < attempts && !m_isStopping; ++attempt) {
        result = read(group);
        if (result) {
            publish(group);
            return Result();
        }
        if (result == Result::DeviceError) {
            failGroup(group, result);
            return Result();
        }
        m_connection.Close();
    }
    return result;
}

/// One request, the connection opened for it where needed, both within one time-out.
Result ModbusPoller::read(const Group &group)
{
    const Timestamp begin = steadyNow();
    if (!m_connection.IsOpen()) {
        const Result opened =
            m_connection.Open(m_settings.host, m_settings.port, m_settings.timeout);
        if (!opened)
            return opened;
    }
    const int spent = int((steadyNow() - begin) / msToUs);
    const PolledGroup &config = group.config;
    return m_connection.Read(config.table, config.start, config.count, m_settings.timeout - spent,
                             m_data);
}

void ModbusPoller::publish(Group &group)
{
    const Timestamp time = Clock::Current().Now();
    for (const PolledPoint &point : group.config.points)
        point.sink.Publish(ModbusPoints::Decode(point.point, m_data), time);
    if (!group.error)
        m_listener.journal(LevelInformation, "Группа снова читается", group.config.path);
    group.error = Result();
}

void ModbusPoller::failGroup(Group &group, const Result &reason)
{
    for (const PolledPoint &point : group.config.points)
        point.sink.Fail(reason);
    const bool isNew = group.error.GetDetail() != reason.GetDetail();
    group.error = reason;
    if (isNew)
        m_listener.journal(LevelWarning, "Устройство отклонило чтение: " + reason.GetDetail(),
                           group.config.path);
}

void ModbusPoller::setConnected()
{
    m_link = Link::Connected;
    m_backoff.Reset();
    for (Group &group : m_groups)
        group.schedule.Restart(steadyNow());
    m_groups.front().schedule.Advance(steadyNow());
    {
        const std::lock_guard lock(m_mutex);
        m_acceptsWrites = !m_isStopping;
    }
    m_listener.journal(LevelInformation,
                       "Связь с " + m_settings.host + ":" + m_settings.port + " установлена", "");
    m_listener.linkChanged(true);
}

void ModbusPoller::lose(const Result &reason)
{
    m_connection.Close();
    std::deque<QueuedWrite> unsent;
    {
        const std::lock_guard lock(m_mutex);
        m_acceptsWrites = false;
        unsent.swap(m_queue);
    }
    if (m_isStopping || m_link == Link::Lost)
        return;
    m_link = Link::Lost;
    for (const Group &group : m_groups) {
        for (const PolledPoint &point : group.config.points)
            point.sink.Lose(reason);
    }
    m_listener.journal(LevelWarning, "Нет связи с устройством: " + reason.ToString(), "");
    for (const QueuedWrite &write : unsent)
        m_listener.journal(LevelWarning, "Запись не отправлена: нет связи", write.path);
    m_listener.linkChanged(false);
}

Result ModbusPoller::QueueWrite(QueuedWrite write)
{
    {
        const std::lock_guard lock(m_mutex);
        if (!m_acceptsWrites)
            return Result(Result::NotConnected, m_settings.host + ":" + m_settings.port);
        if (m_queue.size() >= maximumQueue)
            return Result(Result::LimitExceeded, "too many writes are waiting");
        m_queue.push_back(std::move(write));
    }
    m_wake.notify_all();
    return Result();
}

bool ModbusPoller::takeWrite(QueuedWrite &write)
{
    const std::lock_guard lock(m_mutex);
    if (m_queue.empty())
        return false;
    write = std::move(m_queue.front());
    m_queue.pop_front();
    return true;
}

/// Sent once only: a write without an answer may have been carried out, so it is the read-back
/// that tells.
void ModbusPoller::send(const QueuedWrite &write)
{
    Group &group = m_groups[write.group];
    const Result written = m_connection.Write(group.config.table, write.address, write.words,
                                              group.config.writesMultiple, m_settings.timeout);
    if (m_isStopping)
        return;
    if (!written)
        m_listener.journal(LevelWarning, "Запись не выполнена: " + written.ToString(), write.path);
    if (!written && written != Result::DeviceError)
        m_connection.Close();
    const Result polled = poll(group);
    if (!polled)
        lose(polled);
}

void ModbusPoller::waitUntil(Timestamp steady)
{
    std::unique_lock lock(m_mutex);
    const std::chrono::microseconds wait(std::max<Timestamp>(steady - steadyNow(), 0));
    m_wake.wait_for(lock, wait, [this] { return m_isStopping || !m_queue.empty(); });
}

} // namespace Nodes
