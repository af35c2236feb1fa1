#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Nodes {

/// A column of a report's data: numbers, NaN where nothing is known, or texts.
struct ReportColumn
{
    std::string name; ///< by which templates ask for it
    std::vector<double> numbers;
    std::vector<std::string> texts;
    bool isText = false;
    int decimals = -1; ///< of the numbers, as shown; -1: as many as it takes
};

/// The rows that a report's template gets from one data source. Made once, then never changed and
/// handed around as a pointer; any thread.
struct NODES_EXPORT ReportTable
{
    /// More rows than anybody reads: what is behind them is left out, and `result` says so.
    static constexpr std::size_t MostRows = 100000;

    std::vector<ReportColumn> columns;
    std::size_t rows = 0;
    /// Why nothing, or not all, is there: for the operator, who has to be told.
    Result result;

    /// Columns come before their cells; references end with the next column.
    ReportColumn &AddNumbers(const std::string &name, int decimals = -1);
    ReportColumn &AddTexts(const std::string &name);
    /// Null when there is none of that name.
    const ReportColumn *Find(const std::string &name) const;
    /// Of several results the first that is no success stays.
    void Note(const Result &found);
};

using ReportTablePtr = std::shared_ptr<const ReportTable>;

} // namespace Nodes
