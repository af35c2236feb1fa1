#pragma once

#include <cstdint>
#include <string>

namespace Nodes {

class SqliteStatement;
struct StoredAlarm;

/// The columns of the table of alarm states, beginning with home and node.
namespace AlarmStateColumns {

/// Statement for Bind.
std::string Replacement();
/// Statement for Read: needs the home's project (?1) and station (?2).
std::string Selection();

void Bind(SqliteStatement &statement, std::int64_t home, unsigned long node,
          const StoredAlarm &stored);
StoredAlarm Read(const SqliteStatement &statement, unsigned long &node);

/// Statements that bring the table of the first version up to date.
extern const char *const SecondVersion;

} // namespace AlarmStateColumns

} // namespace Nodes
