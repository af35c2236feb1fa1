#pragma once

#include "nodes/journal/JournalRetention.h"
#include "nodes/journal/JournalSearch.h"
#include "nodes/journal/JournalTrim.h"

#include <optional>

namespace Nodes {

class PostgresConnection;

/// As JournalTrim, of a journal in PostgreSQL. Within transactions of its caller. One thread.
class PostgresJournalTrim
{
public:
    explicit PostgresJournalTrim(PostgresConnection &connection) : m_connection(connection) {}

    [[nodiscard]] Result MakePlan(const JournalRetention &retention,
                                  std::optional<JournalTrim::Plan> &plan);
    [[nodiscard]] Result Begin(const JournalTrim::Plan &plan);
    [[nodiscard]] Result IsUnderWay(bool &isUnderWay);
    [[nodiscard]] Result Step();

private:
    [[nodiscard]] Result findAged(Timestamp age, std::uint64_t &last);
    [[nodiscard]] Result findExcess(std::uint64_t bytes, const JournalEnds &ends,
                                    std::uint64_t &last);
    [[nodiscard]] Result note(std::uint64_t count, const JournalLink &last);

    PostgresConnection &m_connection;
};

} // namespace Nodes
