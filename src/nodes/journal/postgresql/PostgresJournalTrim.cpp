#include "nodes/journal/postgresql/PostgresJournalTrim.h"

#include "nodes/journal/JournalProof.h"
#include "nodes/journal/postgresql/PostgresJournalTables.h"
#include "nodes/storage/postgresql/PostgresConnection.h"
#include "nodes/storage/postgresql/PostgresParameters.h"
#include "nodes/values/Clock.h"

#include <algorithm>

namespace Nodes {

using Parameters = PostgresParameters;

Result PostgresJournalTrim::MakePlan(const JournalRetention &retention,
                                     std::optional<JournalTrim::Plan> &plan)
{
    JournalEnds ends;
    JournalTrim::Plan made;
    std::uint64_t last = 0;
    Result result = PostgresJournalTables::ReadEnds(m_connection, ends);
    const std::uint64_t first = ends.anchor.id + 1;
    if (result && retention.maximumAge > 0) {
        result = findAged(retention.maximumAge, last);
        made.reason = JournalTrim::AgeText(retention.maximumAge);
    }
    if (result && retention.maximumBytes > 0 && last < first) {
        result = findExcess(retention.maximumBytes, ends, last);
        made.reason = JournalTrim::SizeText(retention.maximumBytes);
    }
    const std::uint64_t spared =
        std::max(ends.head.id, JournalTrim::LeastKept) - JournalTrim::LeastKept;
    last = std::min({last, spared, first + JournalTrim::MostPlanned - 1});
    if (!result || last < first)
        return result;
    PostgresAnswer row;
    result = m_connection.Query("SELECT hash FROM events WHERE id = $1",
                                Parameters().Add(static_cast<std::int64_t>(last)), row);
    if (result && !row.IsEmpty()) {
        made.first = first;
        made.last = {last, row.Bytes(0, 0)};
        plan = made;
    }
    return result;
}

/// Rows go in their order: behind the first one that is young enough none is taken.
Result PostgresJournalTrim::findAged(Timestamp age, std::uint64_t &last)
{
    const Timestamp now = Clock::Current().Now();
    PostgresAnswer rows;
    const Result result = m_connection.Query(
        "SELECT id, time FROM events ORDER BY id LIMIT $1",
        Parameters().Add(static_cast<std::int64_t>(JournalTrim::MostPlanned)), rows);
    for (int row = 0; row < rows.Size(); ++row) {
        if (!JournalTrim::IsAged(rows.Integer(row, 1), row == 0, age, now))
            break;
        last = static_cast<std::uint64_t>(rows.Integer(row, 0));
    }
    return result;
}

/// As many rows of the whole as bytes are too many, and a tenth more.
Result PostgresJournalTrim::findExcess(std::uint64_t bytes, const JournalEnds &ends,
                                       std::uint64_t &last)
{
    PostgresAnswer size;
    // Pages whose rows are gone count until the server uses them again: the mean row tells.
    const Result result =
        m_connection.Execute("SELECT coalesce(avg(pg_column_size(e.*)), 0)::bigint + 120 FROM "
                             "(SELECT * FROM events ORDER BY id DESC LIMIT 1000) AS e",
                             &size);
    if (!result)
        return result;
    const double rows = double(ends.head.id - ends.anchor.id);
    const double used = rows * double(size.Integer(0, 0));
    if (used <= double(bytes))
        return result;
    const double share = (used - 0.9 * double(bytes)) / used;
    last = ends.anchor.id + static_cast<std::uint64_t>(std::max(1.0, share * rows));
    return result;
}

Result PostgresJournalTrim::Begin(const JournalTrim::Plan &plan)
{
    JournalEnds ends;
    const Result result = PostgresJournalTables::ReadEnds(m_connection, ends);
    if (!result)
        return result;
    return m_connection.Query(
        "INSERT INTO anchor (id, hash, count, time, reason, until) VALUES ($1, $2, 0, $3, $4, $5) "
        "ON CONFLICT (one) DO UPDATE SET time = $3, reason = $4, until = $5",
        Parameters()
            .Add(static_cast<std::int64_t>(ends.anchor.id))
            .AddBytes(ends.anchor.hash)
            .Add(Clock::Current().Now())
            .Add(std::string_view(plan.reason))
            .Add(static_cast<std::int64_t>(plan.last.id)));
}

Result PostgresJournalTrim::IsUnderWay(bool &isUnderWay)
{
    PostgresAnswer left;
    const Result result = m_connection.Execute("SELECT until - id FROM anchor", &left);
    isUnderWay = result && !left.IsEmpty() && left.Integer(0, 0) > 0;
    return result;
}

Result PostgresJournalTrim::Step()
{
    JournalEnds ends;
    Result result = PostgresJournalTables::ReadEnds(m_connection, ends);
    PostgresAnswer rows;
    if (result)
        result = m_connection.Query(
            std::string(PostgresJournalTables::Columns) +
                " WHERE id > $1 AND id <= (SELECT until FROM anchor) ORDER BY id LIMIT $2",
            Parameters()
                .Add(static_cast<std::int64_t>(ends.anchor.id))
                .Add(static_cast<std::int64_t>(JournalTrim::StepRows)),
            rows);
    JournalProof proof(ends.anchor);
    for (int at = 0; result && at < rows.Size(); ++at) {
        JournalRow row;
        result = PostgresJournalTables::ReadRow(rows, at, row);
        if (result)
            result = proof.Take(row, rows.Bytes(at, PostgresJournalTables::HashColumn));
    }
    if (result)
        result =
            m_connection.Query("DELETE FROM events WHERE id <= $1",
                               Parameters().Add(static_cast<std::int64_t>(proof.GetLast().id)));
    return result ? note(proof.GetLast().id - ends.anchor.id, proof.GetLast()) : result;
}

Result PostgresJournalTrim::note(std::uint64_t count, const JournalLink &last)
{
    return m_connection.Query("UPDATE anchor SET id = $1, hash = $2, count = count + $3, time = $4",
                              Parameters()
                                  .Add(static_cast<std::int64_t>(last.id))
                                  .AddBytes(last.hash)
                                  .Add(static_cast<std::int64_t>(count))
                                  .Add(Clock::Current().Now()));
}

} // namespace Nodes
