#include "nodes/journal/JournalSources.h"

#include "nodes/storage/SqliteStatement.h"

namespace Nodes {

namespace {

constexpr std::size_t mostKnown = 100000;

} // namespace

Result JournalSources::Read(std::int64_t number, RecordSource &source)
{
    if (number == 0)
        return Result();
    if (m_known.size() > mostKnown)
        m_known.clear();
    if (const auto known = m_known.find(number); known != m_known.end()) {
        source = known->second;
        return Result();
    }
    SqliteStatement s(m_database, "SELECT project, station, station_name, node, name FROM sources "
                                  "WHERE id = ?1");
    s.Bind(1, number);
    source = RecordSource();
    if (s.Step()) {
        source.home = {s.Bytes(0), static_cast<unsigned long>(s.Integer(1)), s.Bytes(2)};
        source.node = static_cast<unsigned long>(s.Integer(3));
        source.name = s.Bytes(4);
    }
    if (s.GetResult())
        m_known.emplace(number, source);
    return s.GetResult();
}

} // namespace Nodes
