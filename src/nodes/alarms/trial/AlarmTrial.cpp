#include "nodes/alarms/trial/AlarmTrial.h"

namespace Nodes {

namespace {

AlarmMoment momentAt(Timestamp at)
{
    return {at, at};
}

// That nobody acknowledges is no reason to be reminded for months.
AlarmSettings withoutReminders(AlarmSettings settings)
{
    settings.realarm = 0;
    return settings;
}

} // namespace

AlarmTrial::AlarmTrial(AlarmSettings settings, const AlarmStatistics::Settings &period)
    : m_tracker(withoutReminders(std::move(settings)), m_lastOccurrence),
      m_statistics(period),
      m_end(period.end)
{
}

void AlarmTrial::pass(Timestamp at)
{
    for (Timestamp due = m_tracker.Deadline(); due <= at; due = m_tracker.Deadline()) {
        m_tracker.Tick(momentAt(due), m_records);
        if (m_tracker.Deadline() == due)
            break; // nothing came of it
    }
}

void AlarmTrial::Judge(const SignalValue &value, Timestamp at)
{
    pass(at);
    m_tracker.Judge(value, momentAt(at), m_records);
    count();
}

void AlarmTrial::JudgeReference(const SignalValue &value, Timestamp at)
{
    pass(at);
    m_tracker.JudgeReference(value, momentAt(at), m_records);
    count();
}

void AlarmTrial::count()
{
    for (const BasicEvent &record : m_records)
        m_statistics.Add(record);
    m_records.clear();
}

AlarmFigures AlarmTrial::Finish()
{
    pass(m_end - 1);
    count();
    return m_statistics.GetFigures();
}

} // namespace Nodes
