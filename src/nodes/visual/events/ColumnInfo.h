#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <vector>

namespace Nodes {

/// One column of an event list: what it shows and how. A value.
struct NODES_EXPORT ColumnInfo
{
    enum enColumn {
        ColumnTime = 1,
        ColumnLevel = 2,
        ColumnType = 3,
        ColumnText = 4,
        ColumnGroup = 5,
        ColumnSource = 6,
        ColumnUser = 7,
        ColumnValue = 8 ///< old and new value of a change
    };

    enColumn column = ColumnText;
    std::string title;
    bool isVisible = true;
    int position = 0; ///< from 1 on
    int width = 0;    ///< pixels; 0 takes what is left

    /// Columns of a list that says nothing about them, each once, ordered by their codes.
    static std::vector<ColumnInfo> Defaults();
};

} // namespace Nodes
