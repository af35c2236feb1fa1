#include "nodes/reports/data/ReportTable.h"

#include <algorithm>

namespace Nodes {

ReportColumn &ReportTable::AddNumbers(const std::string &name, int decimals)
{
    ReportColumn &column = columns.emplace_back();
    column.name = name;
    column.decimals = decimals;
    return column;
}

ReportColumn &ReportTable::AddTexts(const std::string &name)
{
    ReportColumn &column = columns.emplace_back();
    column.name = name;
    column.isText = true;
    return column;
}

const ReportColumn *ReportTable::Find(const std::string &name) const
{
    const auto found =
        std::find_if(columns.begin(), columns.end(),
                     [&name](const ReportColumn &column) { return column.name == name; });
    return found == columns.end() ? nullptr : &*found;
}

void ReportTable::Note(const Result &found)
{
    if (result)
        result = found;
}

} // namespace Nodes
