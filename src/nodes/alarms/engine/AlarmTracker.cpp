#include "nodes/alarms/engine/AlarmTracker.h"

#include "nodes/alarms/engine/AlarmCondition.h"
#include "nodes/values/Clock.h"

#include <algorithm>
#include <limits>

namespace Nodes {

namespace {

constexpr Timestamp never = std::numeric_limits<Timestamp>::max();
constexpr Timestamp longestShelf = Timestamp(86400) * 1000000;

} // namespace

AlarmMoment AlarmMoment::Now()
{
    const Clock &clock = Clock::Current();
    return {clock.Now(), clock.Steady()};
}

AlarmTracker::AlarmTracker(AlarmSettings settings, unsigned long &lastOccurrence)
    : m_settings(std::move(settings)),
      m_lastOccurrence(lastOccurrence),
      m_flipAt(never),
      m_unshelveAt(never)
{
}

void AlarmTracker::Restore(const AlarmMemory &memory, const AlarmMoment &now)
{
    m_memory = memory;
    m_lastOccurrence = std::max(m_lastOccurrence, memory.occurrence);
    if (isShelved())
        m_unshelveAt =
            now.steady + std::clamp<Timestamp>(memory.shelvedUntil - now.wall, 0, longestShelf);
}

bool AlarmTracker::isHidden() const
{
    return m_memory.isOutOfService || m_memory.isSuppressed || isShelved();
}

AlarmState AlarmTracker::GetState() const
{
    if (m_memory.isOutOfService)
        return AlarmState::OutOfService;
    if (m_memory.isSuppressed)
        return AlarmState::Suppressed;
    if (isShelved())
        return AlarmState::Shelved;
    if (m_memory.isActive)
        return m_memory.isAcked ? AlarmState::ActiveAcked : AlarmState::ActiveUnacked;
    return m_memory.isAcked ? AlarmState::Normal : AlarmState::ReturnedUnacked;
}

BasicEvent AlarmTracker::GetRecord() const
{
    return recordOf(m_memory.isActive ? TypeAlarmActive : TypeAlarmReturned, {});
}

BasicEvent AlarmTracker::recordOf(EventType type, const std::string &user) const
{
    BasicEvent record;
    record.time = m_memory.changed;
    record.type = type;
    record.level = AlarmLevel(m_settings.priority);
    if (type == TypeAcknowledgement)
        record.level = LevelAcknowledge;
    else if (type == TypeAlarmReturned || type == TypeAlarmState)
        record.level = user.empty() ? LevelInformation : LevelAction;
    record.text = m_settings.text + (m_isDoubtful ? " (значение недостоверно)" : "");
    record.source = m_settings.source;
    record.sourceNode = m_settings.node;
    record.user = user;
    record.newValue = m_value.IsEmpty() || m_value.IsError() ? std::string() : m_value.ToString();
    record.alarmState = GetState();
    record.priority = m_settings.priority;
    record.occurrence = m_memory.occurrence;
    record.raised = m_memory.raised;
    record.acknowledged = m_memory.acknowledged;
    record.returned = m_memory.returned;
    return record;
}

/// True when the state shown changed.
bool AlarmTracker::change(EventType type, const std::string &user, const AlarmMoment &now,
                          Records &records, const std::function<void()> &edit)
{
    const AlarmState before = GetState();
    edit();
    if (!isHidden() && !m_memory.isSeen) {
        m_memory.isSeen = true;
        m_seenAt = now.steady;
    }
    if (GetState() == before)
        return false;
    m_memory.changed = now.wall;
    records.push_back(recordOf(type, user));
    return true;
}

/// Under a higher state the one shown stays, so the record says in words what was done.
void AlarmTracker::operate(const char *what, const std::string &user, const AlarmMoment &now,
                           Records &records, const std::function<void()> &edit)
{
    const AlarmMemory before = m_memory;
    if (change(TypeAlarmState, user, now, records, edit) || m_memory == before)
        return;
    BasicEvent record = recordOf(TypeAlarmState, user);
    record.time = now.wall;
    record.text += std::string(": ") + what;
    records.push_back(std::move(record));
}

void AlarmTracker::raise(const AlarmMoment &now)
{
    m_memory.isActive = true;
    m_memory.isAcked = !m_settings.isAckRequired;
    m_memory.isSeen = !isHidden();
    m_seenAt = now.steady;
    m_memory.raised = now.wall;
    m_memory.acknowledged = 0;
    m_memory.returned = 0;
    // Counted from the wall clock's milliseconds, so that numbers stay unique without a file.
    m_lastOccurrence = std::max(m_lastOccurrence + 1, static_cast<unsigned long>(now.wall / 1000));
    m_memory.occurrence = m_lastOccurrence;
}

void AlarmTracker::clear(const AlarmMoment &now)
{
    m_memory.isActive = false;
    m_memory.returned = now.wall;
    if (!m_memory.isSeen)
        m_memory.isAcked = true;
}

void AlarmTracker::Judge(const SignalValue &value, const AlarmMoment &now, Records &records)
{
    const AlarmVerdict verdict = m_settings.condition->Judge(value, m_memory.isActive);
    m_value = value;
    // A delay that was running when the value was lost begins anew when it is back.
    if (verdict == AlarmVerdict::Unknown || (verdict == AlarmVerdict::Alarm) == m_memory.isActive)
        m_flipAt = never;
    else if (m_flipAt == never)
        m_flipAt = now.steady + (m_memory.isActive ? m_settings.offDelay : m_settings.onDelay);
    m_isDoubtful = verdict == AlarmVerdict::Unknown;
    Tick(now, records);
}

void AlarmTracker::Tick(const AlarmMoment &now, Records &records)
{
    if (now.steady >= m_flipAt) {
        m_flipAt = never;
        if (m_memory.isActive)
            change(TypeAlarmReturned, {}, now, records, [&] { clear(now); });
        else
            change(TypeAlarmActive, {}, now, records, [&] { raise(now); });
    }
    if (now.steady >= m_unshelveAt)
        Unshelve({}, now, records);
}

Timestamp AlarmTracker::Deadline() const
{
    return std::min(m_flipAt, m_unshelveAt);
}

Result AlarmTracker::AcknowledgeSeen(Timestamp seenBy, const std::string &user,
                                     const std::string &comment, const AlarmMoment &now,
                                     Records &records)
{
    if (!m_memory.isAcked && (!m_memory.isSeen || m_seenAt > seenBy))
        return Result(Result::NotFound, "not seen yet");
    return Acknowledge(m_memory.occurrence, user, comment, now, records);
}

Result AlarmTracker::Acknowledge(unsigned long occurrence, const std::string &user,
                                 const std::string &comment, const AlarmMoment &now,
                                 Records &records)
{
    if (m_memory.isAcked)
        return Result(Result::NotFound, "nothing to acknowledge");
    if (occurrence != m_memory.occurrence)
        return Result(Result::Refused, "another occurrence waits than " +
                                           std::to_string(occurrence) + ": " +
                                           std::to_string(m_memory.occurrence));
    m_memory.isAcked = true;
    m_memory.changed = now.wall;
    m_memory.acknowledged = now.wall;
    BasicEvent record = recordOf(TypeAcknowledgement, user);
    record.source = "Acknowledgement";
    record.text = "Квитирование события \"" + record.text + "\"";
    if (!comment.empty())
        record.text += ". Комментарий: " + comment;
    records.push_back(std::move(record));
    return Result();
}

void AlarmTracker::Shelve(Timestamp duration, const std::string &user, const AlarmMoment &now,
                          Records &records)
{
    // A longer stay on the shelf is a change of its own.
    m_memory.shelvedUntil = 0;
    operate("отложена", user, now, records, [&] {
        m_memory.shelvedUntil = now.wall + duration;
        m_unshelveAt = now.steady + duration;
    });
}

void AlarmTracker::Unshelve(const std::string &user, const AlarmMoment &now, Records &records)
{
    operate("снова действует после откладывания", user, now, records, [this] {
        m_memory.shelvedUntil = 0;
        m_unshelveAt = never;
    });
}

void AlarmTracker::SetOutOfService(bool out, const std::string &user, const AlarmMoment &now,
                                   Records &records)
{
    operate(out ? "выведена из работы" : "введена в работу", user, now, records,
            [&] { m_memory.isOutOfService = out; });
}

void AlarmTracker::SetSuppressed(bool suppressed, const std::string &user, const AlarmMoment &now,
                                 Records &records)
{
    operate(suppressed ? "подавлена" : "подавление снято", user, now, records,
            [&] { m_memory.isSuppressed = suppressed; });
}

} // namespace Nodes
