#include "nodes/alarms/engine/AlarmTracker.h"

#include "nodes/alarms/engine/AlarmRecord.h"
#include "nodes/alarms/engine/AlarmTuningRules.h"
#include "nodes/alarms/engine/FirstUpGroup.h"
#include "nodes/values/Clock.h"

#include <algorithm>
#include <limits>

namespace Nodes {

namespace {

constexpr Timestamp never = std::numeric_limits<Timestamp>::max();
constexpr Timestamp second = 1000000;
constexpr Timestamp minute = 60 * second;
constexpr Timestamp longestShelf = 86400 * second;

/// "45 с", "10 мин", "8 ч" or "8 ч 30 мин".
std::string durationText(Timestamp duration)
{
    const Timestamp seconds = duration / second;
    if (seconds % 60 != 0 || seconds == 0)
        return std::to_string(seconds) + " с";
    const Timestamp hours = seconds / 3600;
    const Timestamp minutes = seconds % 3600 / 60;
    std::string text = hours != 0 ? std::to_string(hours) + " ч" : "";
    if (minutes != 0)
        text += (text.empty() ? "" : " ") + std::to_string(minutes) + " мин";
    return text;
}

} // namespace

AlarmMoment AlarmMoment::Now()
{
    const Clock &clock = Clock::Current();
    return {clock.Now(), clock.Steady()};
}

AlarmTracker::AlarmTracker(AlarmSettings settings, unsigned long &lastOccurrence)
    : m_settings(std::move(settings)),
      m_condition(m_settings.condition->Clone()),
      m_tuning(AlarmTuningRules::OfProject(m_settings)),
      m_lastOccurrence(lastOccurrence),
      m_flipAt(never),
      m_unshelveAt(never),
      m_remindAt(never),
      m_lookAt(never)
{
}

AlarmTuning AlarmTracker::Restore(const AlarmMemory &memory, const AlarmMoment &now)
{
    m_memory = memory;
    m_lastOccurrence = std::max(m_lastOccurrence, memory.occurrence);
    if (isShelved())
        m_unshelveAt =
            now.steady + std::clamp<Timestamp>(memory.shelvedUntil - now.wall, 0, longestShelf);
    AlarmTuning overruled;
    m_memory.EditDeeds([&](AlarmDeeds &deeds) {
        overruled = AlarmTuningRules::DropOverruled(AlarmTuningRules::OfProject(m_settings), deeds);
    });
    takeTuning();
    // Which came first is remembered; the order of restoring tells nothing.
    if (m_group && isListed()) {
        m_isCounted = true;
        ++m_group->listed;
        if (memory.isFirstUp)
            m_group->first = this;
    }
    follow(now);
    return overruled;
}

BasicEvent AlarmTracker::GetRecord() const
{
    BasicEvent record = recordOf(m_memory.isActive ? TypeAlarmActive : TypeAlarmReturned, {});
    record.user = m_memory.Deeds().acknowledgedBy;
    return record;
}

BasicEvent AlarmTracker::recordOf(EventType type, const std::string &user) const
{
    BasicEvent record = AlarmRecord(m_settings, m_memory, type, user);
    if (m_isDoubtful)
        record.text += " (значение недостоверно)";
    if (!m_value.IsEmpty() && !m_value.IsError())
        record.newValue = m_value.ToString();
    record.isFirstUp = m_group && m_group->first == this;
    return record;
}

/// True when the state shown changed.
bool AlarmTracker::change(EventType type, const std::string &user, const AlarmMoment &now,
                          Records &records, const Edit &edit)
{
    const AlarmState before = GetState();
    edit();
    if (!m_memory.isHidden() && !m_memory.isSeen) {
        m_memory.isSeen = true;
        m_seenAt = now.steady;
    }
    follow(now);
    if (GetState() == before)
        return false;
    m_memory.changed = now.wall;
    records.push_back(recordOf(type, user));
    return true;
}

/// What was done is said in words: under a higher state the one shown stays.
void AlarmTracker::operate(const std::string &what, const AlarmDeed &deed, const AlarmMoment &now,
                           Records &records, const Edit &edit)
{
    const AlarmMemory before = m_memory;
    if (!change(TypeAlarmState, deed.by, now, records, edit)) {
        if (m_memory == before)
            return;
        records.push_back(recordOf(TypeAlarmState, deed.by));
        records.back().time = now.wall;
    }
    records.back().text += ": " + what;
    if (!deed.reason.empty())
        records.back().text += ". Причина: " + deed.reason;
}

/// What depends on whether operators see the alarm and whether it waits for them.
void AlarmTracker::follow(const AlarmMoment &now)
{
    followGroup();
    if (!isListed() || m_memory.isAcked || m_settings.realarm == 0)
        m_remindAt = never;
    else if (m_remindAt == never)
        m_remindAt = now.steady + m_settings.realarm;
    if (GetState() == AlarmState::Normal)
        forgetAcknowledgement();
}

void AlarmTracker::forgetAcknowledgement()
{
    if (m_memory.deeds)
        m_memory.EditDeeds([](AlarmDeeds &deeds) {
            deeds.acknowledgedBy.clear();
            deeds.comment.clear();
        });
}

void AlarmTracker::followGroup()
{
    if (!m_group)
        return;
    if (isListed() != m_isCounted) {
        m_isCounted = !m_isCounted;
        if (!m_isCounted && --m_group->listed == 0)
            m_group->first = nullptr;
        else if (m_isCounted && m_group->listed++ == 0)
            m_group->first = this;
    }
    m_memory.isFirstUp = m_group->first == this;
}

void AlarmTracker::remind(const AlarmMoment &now, Records &records)
{
    m_remindAt = now.steady + m_settings.realarm;
    ++m_memory.reminders;
    m_memory.changed = now.wall;
    BasicEvent record = recordOf(TypeAlarmState, {});
    record.level = AlarmLevel(m_settings.priority);
    // The clock may have been set back meanwhile: it has waited for that long in any case.
    const Timestamp waited = std::max(now.wall - m_memory.raised, m_settings.realarm);
    record.text += ": повторно, не квитирована " + durationText(waited - waited % minute);
    records.push_back(std::move(record));
}

void AlarmTracker::raise(const AlarmMoment &now)
{
    m_memory.isActive = true;
    m_memory.isAcked = !m_settings.isAckRequired;
    m_memory.isResetDue = false;
    m_memory.isSeen = !m_memory.isHidden();
    m_seenAt = now.steady;
    m_memory.raised = now.wall;
    m_memory.acknowledged = 0;
    m_memory.returned = 0;
    m_memory.reminders = 0;
    m_remindAt = never;
    forgetAcknowledgement();
    // Counted from the wall clock's milliseconds, so that numbers stay unique without a file.
    m_lastOccurrence = std::max(m_lastOccurrence + 1, static_cast<unsigned long>(now.wall / 1000));
    m_memory.occurrence = m_lastOccurrence;
}

void AlarmTracker::clear(const AlarmMoment &now)
{
    m_memory.isActive = false;
    m_memory.returned = now.wall;
    m_memory.isResetDue = m_settings.isLatched && m_memory.isSeen;
    if (!m_memory.isSeen)
        m_memory.isAcked = true;
}

void AlarmTracker::Judge(const SignalValue &value, const AlarmMoment &now, Records &records)
{
    m_value = value;
    judge(now, records);
    Tick(now, records);
}

void AlarmTracker::JudgeReference(const SignalValue &value, const AlarmMoment &now,
                                  Records &records)
{
    m_reference = value;
    judge(now, records);
    Tick(now, records);
}

void AlarmTracker::judge(const AlarmMoment &now, Records &records)
{
    const AlarmVerdict verdict =
        m_condition->Judge({m_value, m_reference, m_memory.isActive, now.steady});
    // A condition that asks for what is over must not keep the engine busy at this very moment.
    m_lookAt = std::max(m_condition->NextLook(), now.steady + 1);
    // A delay that was running when the value was lost begins anew when it is back.
    if (verdict == AlarmVerdict::Unknown || (verdict == AlarmVerdict::Alarm) == m_memory.isActive)
        m_flipAt = never;
    else if (m_flipAt == never)
        m_flipAt = now.steady +
                   Timestamp(m_memory.isActive ? *m_tuning.offDelay : *m_tuning.onDelay) * 1000;
    m_isDoubtful = verdict == AlarmVerdict::Unknown;
    if (now.steady >= m_flipAt)
        flip(now, records);
}

void AlarmTracker::flip(const AlarmMoment &now, Records &records)
{
    m_flipAt = never;
    if (m_memory.isActive)
        change(TypeAlarmReturned, {}, now, records, [&] { clear(now); });
    else
        change(TypeAlarmActive, {}, now, records, [&] { raise(now); });
}

void AlarmTracker::Tick(const AlarmMoment &now, Records &records)
{
    if (now.steady >= m_lookAt)
        judge(now, records);
    if (now.steady >= m_flipAt)
        flip(now, records);
    if (now.steady >= m_unshelveAt)
        Unshelve({}, now, records);
    if (now.steady >= m_remindAt)
        remind(now, records);
}

Timestamp AlarmTracker::Deadline() const
{
    return std::min({m_flipAt, m_unshelveAt, m_remindAt, m_lookAt});
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
    if (!user.empty() || !comment.empty())
        m_memory.EditDeeds([&](AlarmDeeds &deeds) {
            deeds.acknowledgedBy = user;
            deeds.comment = comment;
        });
    BasicEvent record = recordOf(TypeAcknowledgement, user);
    record.source = "Acknowledgement";
    record.text = "Квитирование события \"" + record.text + "\"";
    if (!comment.empty())
        record.text += ". Комментарий: " + comment;
    follow(now);
    records.push_back(std::move(record));
    return Result();
}

Result AlarmTracker::Reset(const std::string &user, const AlarmMoment &now, Records &records)
{
    if (m_settings.isLatched && m_memory.isActive)
        return Result(Result::Refused, "Сбросить нельзя: условие тревоги ещё есть");
    if (!m_memory.isResetDue)
        return Result(Result::NotFound, "Сбрасывать нечего");
    if (!m_memory.isAcked)
        return Result(Result::Refused, "Сбросить нельзя: тревога не квитирована");
    operate("сброшена", {user, {}}, now, records, [this] { m_memory.isResetDue = false; });
    return Result();
}

void AlarmTracker::Shelve(Timestamp duration, const std::string &user, const AlarmMoment &now,
                          Records &records, const std::string &reason)
{
    // A longer stay on the shelf is a change of its own.
    m_memory.shelvedUntil = 0;
    operate("отложена на " + durationText(duration), {user, reason}, now, records, [&] {
        m_memory.shelvedUntil = now.wall + duration;
        m_memory.EditDeeds([&](AlarmDeeds &deeds) { deeds.shelved = {user, reason}; });
        m_unshelveAt = now.steady + duration;
    });
}

void AlarmTracker::Unshelve(const std::string &user, const AlarmMoment &now, Records &records)
{
    operate("снова действует после откладывания", {user, {}}, now, records, [this] {
        m_memory.shelvedUntil = 0;
        m_memory.EditDeeds([](AlarmDeeds &deeds) { deeds.shelved = {}; });
        m_unshelveAt = never;
    });
}

void AlarmTracker::SetOutOfService(bool out, const std::string &user, const AlarmMoment &now,
                                   Records &records, const std::string &reason)
{
    const AlarmDeed deed{user, reason};
    operate(out ? "выведена из работы" : "введена в работу", deed, now, records, [&] {
        m_memory.isOutOfService = out;
        m_memory.EditDeeds(
            [&](AlarmDeeds &deeds) { deeds.outOfService = out ? deed : AlarmDeed(); });
    });
}

void AlarmTracker::SetSuppressed(bool suppressed, const std::string &user, const AlarmMoment &now,
                                 Records &records, const std::string &reason)
{
    const AlarmDeed deed{user, reason};
    operate(suppressed ? "подавлена" : "подавление снято", deed, now, records, [&] {
        m_memory.isSuppressed = suppressed;
        m_memory.EditDeeds(
            [&](AlarmDeeds &deeds) { deeds.suppressed = suppressed ? deed : AlarmDeed(); });
    });
}

void AlarmTracker::SuppressByDesign(bool suppressed, const AlarmMoment &now, Records &records)
{
    operate(suppressed ? "подавлена " + m_settings.suppressReason : "подавление по проекту снято",
            {}, now, records, [&] { m_memory.isSuppressedByDesign = suppressed; });
}

void AlarmTracker::takeTuning()
{
    m_tuning =
        AlarmTuningRules::Effective(AlarmTuningRules::OfProject(m_settings), m_memory.Deeds());
    if (m_tuning.limit)
        m_condition->SetThreshold({*m_tuning.limit, *m_tuning.deadband});
}

Result AlarmTracker::Tune(const AlarmTuning &wanted, const std::string &user,
                          const AlarmMoment &now, Records &records)
{
    const Result checked = AlarmTuningRules::Check(m_settings, wanted);
    if (!checked)
        return checked;
    const AlarmTuning before = m_tuning;
    m_memory.EditDeeds([&](AlarmDeeds &deeds) {
        AlarmTuningRules::Apply(wanted, AlarmTuningRules::OfProject(m_settings), user, now.wall,
                                deeds);
    });
    takeTuning();
    if (m_tuning == before)
        return Result();
    BasicEvent record = recordOf(TypeAlarmState, user);
    record.time = now.wall;
    record.level = LevelAction;
    record.text += ": " + AlarmTuningRules::Describe(before, m_tuning);
    records.push_back(std::move(record));
    m_flipAt = never;
    judge(now, records);
    return Result();
}

Result AlarmTracker::RevertTuning(const std::string &user, const AlarmMoment &now, Records &records)
{
    if (m_memory.Deeds().tuning.isEmpty())
        return Result(Result::NotFound, "Тревога работает так, как задано в проекте");
    return Tune(m_memory.Deeds().project, user, now, records);
}

} // namespace Nodes
