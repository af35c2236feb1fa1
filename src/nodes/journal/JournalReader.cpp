#include "nodes/journal/JournalReader.h"

#include "nodes/journal/JournalSearch.h"

namespace Nodes {

JournalReader::JournalReader(std::unique_ptr<JournalSearch> search, Resolver resolver)
    : m_search(std::move(search)), m_resolver(std::move(resolver))
{
}

JournalReader::~JournalReader() = default;

Result JournalReader::Query(const JournalQuery &query, std::vector<BasicEvent> &events)
{
    events.clear();
    std::vector<JournalRow> rows;
    const Result result = m_search->Find(query, rows);
    if (!result)
        return result;
    events.reserve(rows.size());
    for (JournalRow &row : rows) {
        events.push_back(std::move(row.event));
        events.back().sourceNode = m_resolver(row.source);
        events.back().source = std::move(row.source.name);
    }
    return result;
}

Result JournalReader::Verify()
{
    return m_search->Verify({}, {});
}

void JournalReader::Cancel()
{
    m_search->Cancel();
}

} // namespace Nodes
