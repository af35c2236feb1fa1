#pragma once

#include "nodes/archive/store/ArchiveSignalKey.h"
#include "nodes/values/Timestamp.h"

#include <string>
#include <vector>

namespace Nodes {

/// Something wrong in an archive.
struct ArchiveFinding
{
    ArchiveSignalKey signal; ///< node 0 and no name where it concerns no signal
    Timestamp from = 0;      ///< span of the samples concerned; 0, 0: unknown
    Timestamp to = 0;
    std::string place; ///< which row of which table, or which file
    std::string text;  ///< what is wrong with it, English
};

using ArchiveFindings = std::vector<ArchiveFinding>;

} // namespace Nodes
