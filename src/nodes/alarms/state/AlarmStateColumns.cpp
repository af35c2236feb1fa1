#include "nodes/alarms/state/AlarmStateColumns.h"

#include "nodes/alarms/state/AlarmStateStore.h"
#include "nodes/storage/SqliteStatement.h"

namespace Nodes::AlarmStateColumns {

namespace {

// In the order of the table, which later versions append to; without home.
constexpr const char *names =
    "node, active, acked, suppressed, out_of_service, shelved_until, changed, occurrence, path, "
    "missing_since, raised, acknowledged, returned, seen, reset_due, by_design, first_up, "
    "reminders, shelved_by, shelved_reason, suppressed_by, suppressed_reason, out_by, out_reason, "
    "acked_by, comment, tuned_by, tuned_at, tuned_limit, tuned_deadband, tuned_on_delay, "
    "tuned_off_delay, project_limit, project_deadband, project_on_delay, project_off_delay";
constexpr int count = 37; // home included

/// Binds one value after the other.
class Binder
{
public:
    explicit Binder(SqliteStatement &statement) : m_statement(statement) {}

    void Put(std::int64_t value) { m_statement.Bind(++m_last, value); }
    void Put(const std::string &text) { m_statement.Bind(++m_last, std::string_view(text)); }
    void Put(const std::optional<double> &number)
    {
        if (number)
            m_statement.BindReal(++m_last, *number);
        else
            m_statement.BindNull(++m_last);
    }
    void Put(const std::optional<int> &number)
    {
        if (number)
            m_statement.Bind(++m_last, std::int64_t(*number));
        else
            m_statement.BindNull(++m_last);
    }
    void Put(const AlarmDeed &deed)
    {
        Put(deed.by);
        Put(deed.reason);
    }
    void Put(const AlarmTuning &tuning)
    {
        Put(tuning.limit);
        Put(tuning.deadband);
        Put(tuning.onDelay);
        Put(tuning.offDelay);
    }

private:
    SqliteStatement &m_statement;
    int m_last = 0;
};

/// Reads one column after the other.
class Taker
{
public:
    explicit Taker(const SqliteStatement &statement) : m_statement(statement) {}

    void Take(bool &value) { value = m_statement.Integer(m_next++) != 0; }
    void Take(int &value) { value = int(m_statement.Integer(m_next++)); }
    void Take(Timestamp &value) { value = m_statement.Integer(m_next++); }
    void Take(unsigned long &value)
    {
        value = static_cast<unsigned long>(m_statement.Integer(m_next++));
    }
    void Take(std::string &text) { text = m_statement.Bytes(m_next++); }
    void Take(std::optional<double> &number)
    {
        if (!m_statement.IsNull(m_next))
            number = m_statement.Real(m_next);
        ++m_next;
    }
    void Take(std::optional<int> &number)
    {
        if (!m_statement.IsNull(m_next))
            number = int(m_statement.Integer(m_next));
        ++m_next;
    }
    void Take(AlarmDeed &deed)
    {
        Take(deed.by);
        Take(deed.reason);
    }
    void Take(AlarmTuning &tuning)
    {
        Take(tuning.limit);
        Take(tuning.deadband);
        Take(tuning.onDelay);
        Take(tuning.offDelay);
    }

private:
    const SqliteStatement &m_statement;
    int m_next = 0;
};

} // namespace

const char *const SecondVersion = R"(
ALTER TABLE states ADD COLUMN reset_due INTEGER NOT NULL DEFAULT 0;
ALTER TABLE states ADD COLUMN by_design INTEGER NOT NULL DEFAULT 0;
ALTER TABLE states ADD COLUMN first_up INTEGER NOT NULL DEFAULT 0;
ALTER TABLE states ADD COLUMN reminders INTEGER NOT NULL DEFAULT 0;
ALTER TABLE states ADD COLUMN shelved_by TEXT NOT NULL DEFAULT '';
ALTER TABLE states ADD COLUMN shelved_reason TEXT NOT NULL DEFAULT '';
ALTER TABLE states ADD COLUMN suppressed_by TEXT NOT NULL DEFAULT '';
ALTER TABLE states ADD COLUMN suppressed_reason TEXT NOT NULL DEFAULT '';
ALTER TABLE states ADD COLUMN out_by TEXT NOT NULL DEFAULT '';
ALTER TABLE states ADD COLUMN out_reason TEXT NOT NULL DEFAULT '';
ALTER TABLE states ADD COLUMN acked_by TEXT NOT NULL DEFAULT '';
ALTER TABLE states ADD COLUMN comment TEXT NOT NULL DEFAULT '';
ALTER TABLE states ADD COLUMN tuned_by TEXT NOT NULL DEFAULT '';
ALTER TABLE states ADD COLUMN tuned_at INTEGER NOT NULL DEFAULT 0;
ALTER TABLE states ADD COLUMN tuned_limit REAL;
ALTER TABLE states ADD COLUMN tuned_deadband REAL;
ALTER TABLE states ADD COLUMN tuned_on_delay INTEGER;
ALTER TABLE states ADD COLUMN tuned_off_delay INTEGER;
ALTER TABLE states ADD COLUMN project_limit REAL;
ALTER TABLE states ADD COLUMN project_deadband REAL;
ALTER TABLE states ADD COLUMN project_on_delay INTEGER;
ALTER TABLE states ADD COLUMN project_off_delay INTEGER)";

std::string Replacement()
{
    std::string places = "?";
    for (int i = 1; i < count; ++i)
        places += ", ?";
    return std::string("REPLACE INTO states (home, ") + names + ") VALUES (" + places + ")";
}

std::string Selection()
{
    return std::string("SELECT ") + names +
           " FROM states JOIN homes ON homes.id = states.home"
           " WHERE project = ?1 AND station = ?2";
}

void Bind(SqliteStatement &statement, std::int64_t home, unsigned long node,
          const StoredAlarm &stored)
{
    const AlarmMemory &memory = stored.memory;
    const AlarmDeeds &deeds = memory.Deeds();
    Binder binder(statement);
    for (const std::int64_t value :
         {home, std::int64_t(node), std::int64_t(memory.isActive), std::int64_t(memory.isAcked),
          std::int64_t(memory.isSuppressed), std::int64_t(memory.isOutOfService),
          std::int64_t(memory.shelvedUntil), std::int64_t(memory.changed),
          std::int64_t(memory.occurrence)})
        binder.Put(value);
    binder.Put(stored.path);
    for (const std::int64_t value :
         {std::int64_t(stored.missingSince), std::int64_t(memory.raised),
          std::int64_t(memory.acknowledged), std::int64_t(memory.returned),
          std::int64_t(memory.isSeen), std::int64_t(memory.isResetDue),
          std::int64_t(memory.isSuppressedByDesign), std::int64_t(memory.isFirstUp),
          std::int64_t(memory.reminders)})
        binder.Put(value);
    for (const AlarmDeed *deed : {&deeds.shelved, &deeds.suppressed, &deeds.outOfService})
        binder.Put(*deed);
    binder.Put(deeds.acknowledgedBy);
    binder.Put(deeds.comment);
    binder.Put(deeds.tunedBy);
    binder.Put(std::int64_t(deeds.tunedAt));
    binder.Put(deeds.tuning);
    binder.Put(deeds.project);
}

StoredAlarm Read(const SqliteStatement &statement, unsigned long &node)
{
    StoredAlarm stored;
    AlarmMemory &memory = stored.memory;
    Taker taker(statement);
    taker.Take(node);
    for (bool *flag :
         {&memory.isActive, &memory.isAcked, &memory.isSuppressed, &memory.isOutOfService})
        taker.Take(*flag);
    taker.Take(memory.shelvedUntil);
    taker.Take(memory.changed);
    taker.Take(memory.occurrence);
    taker.Take(stored.path);
    for (Timestamp *time :
         {&stored.missingSince, &memory.raised, &memory.acknowledged, &memory.returned})
        taker.Take(*time);
    for (bool *flag :
         {&memory.isSeen, &memory.isResetDue, &memory.isSuppressedByDesign, &memory.isFirstUp})
        taker.Take(*flag);
    taker.Take(memory.reminders);
    memory.EditDeeds([&taker](AlarmDeeds &deeds) {
        for (AlarmDeed *deed : {&deeds.shelved, &deeds.suppressed, &deeds.outOfService})
            taker.Take(*deed);
        for (std::string *text : {&deeds.acknowledgedBy, &deeds.comment, &deeds.tunedBy})
            taker.Take(*text);
        taker.Take(deeds.tunedAt);
        taker.Take(deeds.tuning);
        taker.Take(deeds.project);
    });
    return stored;
}

} // namespace Nodes::AlarmStateColumns
