#include "nodes/journal/JournalTrim.h"

#include "nodes/journal/JournalAccount.h"
#include "nodes/journal/JournalChain.h"
#include "nodes/storage/SqliteStatement.h"
#include "nodes/values/Clock.h"

#include <algorithm>

namespace Nodes {

constexpr Timestamp day = Timestamp(86400) * 1000000;

std::string JournalTrim::AgeText(Timestamp age)
{
    return age % day == 0 ? "старше " + std::to_string(age / day) + " дн."
                          : "старше " + std::to_string(age / 1000000) + " с";
}

std::string JournalTrim::SizeText(std::uint64_t bytes)
{
    return "журнал больше " + std::to_string(bytes >> 20) + " МБ";
}

bool JournalTrim::IsAged(Timestamp time, bool isFirst, Timestamp age, Timestamp now)
{
    // Not for a handful of rows each time. What is from the future is of a clock that was set
    // wrong: it would hold up those behind it for years.
    const Timestamp beginsAt = now - age - std::min(day, age / 8);
    return time < (isFirst ? beginsAt : now - age) || time > now + day;
}

Result JournalTrim::readNumber(const char *sql, std::int64_t &number)
{
    SqliteStatement statement(m_database, sql);
    number = statement.Step() ? statement.Integer(0) : 0;
    return statement.GetResult();
}

Result JournalTrim::readEnds(Ends &ends)
{
    Link anchor;
    Link head;
    Result result = JournalTables::ReadLink(m_database, "anchor", anchor);
    if (result)
        result = JournalTables::ReadLink(m_database, "head", head);
    ends = {anchor.id + 1, head.id};
    return result;
}

Result JournalTrim::MakePlan(const JournalRetention &retention, std::optional<Plan> &plan)
{
    Ends ends;
    Plan made;
    std::uint64_t last = 0;
    Result result = readEnds(ends);
    if (result && retention.maximumAge > 0) {
        result = findAged(retention.maximumAge, last);
        made.reason = AgeText(retention.maximumAge);
    }
    if (result && retention.maximumBytes > 0 && last < ends.first) {
        result = findExcess(retention.maximumBytes, ends, last);
        made.reason = SizeText(retention.maximumBytes);
    }
    const std::uint64_t spared = std::max(ends.last, LeastKept) - LeastKept;
    last = std::min({last, spared, ends.first + MostPlanned - 1});
    if (!result || last < ends.first)
        return result;
    SqliteStatement row(m_database, "SELECT hash FROM events WHERE id = ?1");
    row.Bind(1, static_cast<std::int64_t>(last));
    if (row.Step()) {
        made.first = ends.first;
        made.last = {last, row.Bytes(0)};
        plan = made;
    }
    return row.GetResult();
}

/// Rows go in their order: behind the first one that is young enough none is taken.
Result JournalTrim::findAged(Timestamp age, std::uint64_t &last)
{
    const Timestamp now = Clock::Current().Now();
    SqliteStatement rows(m_database, "SELECT id, time FROM events ORDER BY id LIMIT ?1");
    rows.Bind(1, static_cast<std::int64_t>(MostPlanned));
    bool isFirst = true;
    while (rows.Step()) {
        if (!IsAged(rows.Integer(1), isFirst, age, now))
            break;
        last = static_cast<std::uint64_t>(rows.Integer(0));
        isFirst = false;
    }
    return rows.GetResult();
}

/// As many rows of the whole as bytes are too many, and a tenth more.
Result JournalTrim::findExcess(std::uint64_t bytes, const Ends &ends, std::uint64_t &last)
{
    std::int64_t pages = 0;
    std::int64_t unused = 0;
    std::int64_t pageBytes = 0;
    Result result = readNumber("PRAGMA page_count", pages);
    if (result)
        result = readNumber("PRAGMA freelist_count", unused);
    if (result)
        result = readNumber("PRAGMA page_size", pageBytes);
    const double used = double(pages - unused) * double(pageBytes);
    if (!result || used <= double(bytes))
        return result;
    const double share = (used - 0.9 * double(bytes)) / used;
    const double rows = double(ends.last) - double(ends.first) + 1;
    last = ends.first + static_cast<std::uint64_t>(std::max(1.0, share * rows)) - 1;
    return result;
}

BasicEvent JournalTrim::EntryOf(const Plan &plan)
{
    BasicEvent event;
    event.time = Clock::Current().Now();
    event.level = LevelInformation;
    event.text = "Из журнала удаляются записи с " + std::to_string(plan.first) + " по " +
                 std::to_string(plan.last.id) + ", всего " +
                 std::to_string(plan.last.id - plan.first + 1) + ": " + plan.reason;
    JournalAccount::Of(plan.last).PutInto(event);
    return event;
}

Result JournalTrim::Begin(const Plan &plan)
{
    Link anchor;
    const Result result = JournalTables::ReadLink(m_database, "anchor", anchor);
    if (!result)
        return result;
    SqliteStatement note(m_database, R"(
INSERT INTO anchor (one, id, hash, count, time, reason, until) VALUES (1, ?1, ?2, 0, ?3, ?4, ?5)
ON CONFLICT (one) DO UPDATE SET time = ?3, reason = ?4, until = ?5)");
    note.Bind(1, static_cast<std::int64_t>(anchor.id));
    note.BindBlob(2, anchor.hash);
    note.Bind(3, Clock::Current().Now());
    note.Bind(4, plan.reason);
    note.Bind(5, static_cast<std::int64_t>(plan.last.id));
    return note.Run();
}

Result JournalTrim::IsUnderWay(bool &isUnderWay)
{
    std::int64_t left = 0;
    const Result result = readNumber("SELECT until - id FROM anchor", left);
    isUnderWay = left > 0;
    return result;
}

Result JournalTrim::Step()
{
    Link anchor;
    std::int64_t until = 0;
    Result result = JournalTables::ReadLink(m_database, "anchor", anchor);
    if (result)
        result = readNumber("SELECT until FROM anchor", until);
    JournalProof proof(anchor);
    if (result)
        result = JournalChain(m_database).Check(proof, static_cast<std::uint64_t>(until), StepRows);
    if (!result)
        return result;
    const Link &last = proof.GetLast();
    SqliteStatement take(m_database, "DELETE FROM events WHERE id <= ?1");
    take.Bind(1, static_cast<std::int64_t>(last.id));
    result = take.Run();
    if (!result)
        return result;
    SqliteStatement note(m_database,
                         "UPDATE anchor SET id = ?1, hash = ?2, count = count + ?3, time = ?4");
    note.Bind(1, static_cast<std::int64_t>(last.id));
    note.BindBlob(2, last.hash);
    note.Bind(3, static_cast<std::int64_t>(last.id - anchor.id));
    note.Bind(4, Clock::Current().Now());
    return note.Run();
}

} // namespace Nodes
