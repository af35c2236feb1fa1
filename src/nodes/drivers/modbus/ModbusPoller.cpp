#include "nodes/drivers/modbus/ModbusPoller.h"

#include "nodes/values/Clock.h"
#include "nodes/values/OperatorText.h"

#include <algorithm>
#include <chrono>
#include <utility>

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
        m_groups.push_back({std::move(group), schedule,
                            Backoff(m_settings.reconnectMinimum, m_settings.reconnectMaximum,
                                    unsigned(steadyNow() + Timestamp(m_groups.size()))),
                            Result()});
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
    letWritesOut();
    m_wake.notify_all();
    m_connection.Interrupt();
    if (m_thread.joinable())
        m_thread.join();
    journalUnsent(std::exchange(m_queue, {}), "опрос остановлен");
}

void ModbusPoller::letWritesOut()
{
    std::unique_lock lock(m_mutex);
    if (std::exchange(m_acceptsWrites, false)) {
        m_isDraining = true;
        m_sent.wait_for(lock, std::chrono::milliseconds(stopPatience),
                        [this] { return m_queue.empty() && !m_isSending; });
    }
    m_isStopping = true;
}

void ModbusPoller::journalUnsent(const std::deque<QueuedWrite> &writes, const char *reason) const
{
    for (const QueuedWrite &write : writes)
        m_listener.journal(LevelWarning, std::string("Запись не отправлена: ") + reason,
                           write.path);
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
    // Any group will do: a device may leave one of them without an answer for ever.
    Group &group = m_groups[(m_firstProbe + m_probes) % m_groups.size()];
    const Result answered = poll(group, m_link == Link::Lost ? 1 : m_settings.retries);
    if (m_isStopping)
        return;
    if (answered) {
        setConnected(group);
        return;
    }
    if (m_isReached && ++m_probes < m_groups.size())
        return;
    m_probes = 0;
    lose(answered);
    waitUntil(steadyNow() + m_backoff.Next() * msToUs);
}

void ModbusPoller::serve()
{
    QueuedWrite write;
    if (takeWrite(write))
        send(write);
    if (m_link != Link::Connected || m_isStopping || m_isDraining)
        return;
    Group &group = nextDue();
    if (!group.schedule.IsDue(steadyNow())) {
        waitUntil(group.schedule.GetNext());
        return;
    }
    pollDue(group);
}

void ModbusPoller::pollDue(Group &group)
{
    const Result polled = poll(group, group.isSilent() ? 1 : m_settings.retries);
    group.schedule.Advance(steadyNow());
    if (!polled)
        examine(group, polled);
}

/// Without an answer from one group another one tells whether the device is there at all. A group
/// known to be silent was asked once only, so then it is the other one that is asked patiently.
void ModbusPoller::examine(Group &group, const Result &reason)
{
    Group *witness = m_isReached ? lastAnswered(&group) : nullptr;
    const int attempts = group.isSilent() ? m_settings.retries : 1;
    if (witness && poll(*witness, attempts))
        silence(group, reason);
    else
        lose(reason);
}

/// The group that answered most recently, `other` and silent ones left out; null without any.
ModbusPoller::Group *ModbusPoller::lastAnswered(const Group *other)
{
    Group *last = nullptr;
    for (Group &group : m_groups) {
        const bool isCandidate = &group != other && group.answered != 0 && !group.isSilent();
        if (isCandidate && (!last || group.answered > last->answered))
            last = &group;
    }
    return last;
}

ModbusPoller::Group &ModbusPoller::nextDue()
{
    // The one that waits longest goes first, so a fast group cannot starve a slow one.
    return *std::min_element(m_groups.begin(), m_groups.end(), [](const Group &a, const Group &b) {
        return a.schedule.GetNext() < b.schedule.GetNext();
    });
}

/// Success when the device answered, be it with an objection to this group.
Result ModbusPoller::poll(Group &group, int attempts)
{
    Result result(Result::NotConnected);
    for (int attempt = 0; attempt < std::max(attempts, 1) && !m_isStopping; ++attempt) {
        result = read(group);
        if (result || result == Result::DeviceError) {
            group.answered = steadyNow();
            group.backoff.Reset();
            if (result)
                publish(group);
            else
                failGroup(group, result);
            return Result();
        }
        m_isReached = m_connection.IsOpen();
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

void ModbusPoller::silence(Group &group, const Result &reason)
{
    for (const PolledPoint &point : group.config.points)
        point.sink.Lose(reason);
    const bool isNew = !group.isSilent();
    group.error = reason;
    group.schedule.Restart(steadyNow() + group.backoff.Next() * msToUs);
    if (isNew)
        m_listener.journal(LevelWarning,
                           "Группа не отвечает, устройство на связи: " + OperatorText(reason),
                           group.config.path);
}

void ModbusPoller::setConnected(Group &answered)
{
    m_link = Link::Connected;
    m_backoff.Reset();
    m_firstProbe = std::size_t(&answered - m_groups.data());
    m_probes = 0;
    for (Group &group : m_groups)
        group.schedule.Restart(steadyNow());
    answered.schedule.Advance(steadyNow());
    {
        const std::lock_guard lock(m_mutex);
        m_acceptsWrites = !m_isStopping && !m_isDraining;
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
    m_sent.notify_all();
    if (m_isStopping || m_link == Link::Lost) {
        journalUnsent(unsent, "нет связи");
        return;
    }
    m_link = Link::Lost;
    if (const Group *last = lastAnswered(nullptr))
        m_firstProbe = std::size_t(last - m_groups.data());
    for (const Group &group : m_groups) {
        for (const PolledPoint &point : group.config.points)
            point.sink.Lose(reason);
    }
    m_listener.journal(LevelWarning, "Нет связи с устройством: " + OperatorText(reason), "");
    journalUnsent(unsent, "нет связи");
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
    m_isSending = true;
    return true;
}

void ModbusPoller::markSent()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isSending = false;
    }
    m_sent.notify_all();
}

/// Sent once only: a write without an answer may have been carried out, so it is the read-back
/// that tells.
void ModbusPoller::send(const QueuedWrite &write)
{
    Group &group = m_groups[write.group];
    const Result written = m_connection.Write(group.config.table, write.address, write.words,
                                              group.config.writesMultiple, m_settings.timeout);
    if (!written)
        m_listener.journal(LevelWarning, "Запись не выполнена: " + OperatorText(written),
                           write.path);
    if (!written && written != Result::DeviceError)
        m_connection.Close();
    markSent();
    if (!m_isDraining)
        pollDue(group);
}

void ModbusPoller::waitUntil(Timestamp steady)
{
    std::unique_lock lock(m_mutex);
    const std::chrono::microseconds wait(std::max<Timestamp>(steady - steadyNow(), 0));
    m_wake.wait_for(lock, wait, [this] { return m_isStopping || !m_queue.empty(); });
}

} // namespace Nodes
