#pragma once

#include "nodes/values/Timestamp.h"

#include <cstddef>
#include <optional>
#include <string>

namespace Nodes {

/// Which journal entries to read.
struct JournalQuery
{
    Timestamp begin = 0; ///< inclusive
    Timestamp end = 0;   ///< exclusive; 0: no end
    std::optional<int> maximumLevel;
    std::string source;        ///< exact name; "" any
    std::string text;          ///< case-insensitive part of the text, Cyrillic included; "" any
    unsigned long afterId = 0; ///< continue a long answer behind this entry
    std::size_t limit = 10000;
};

} // namespace Nodes
