#pragma once

namespace Nodes {

struct BasicEvent;
struct ReportTable;

/// Columns of a report's table that journal entries fill, one entry a row.
class EventColumns
{
public:
    /// Adds the columns; the table outlives this object and has no others.
    explicit EventColumns(ReportTable &table);

    void Add(const BasicEvent &event);

private:
    ReportTable &m_table;
};

} // namespace Nodes
