#pragma once

#include "nodes/NodesExport.h"

#include <set>
#include <string>
#include <utility>

#include <sys/types.h>

namespace Nodes {

/// Regular files that any process which this user may look into has open, as of its making. Takes
/// some milliseconds for each hundred processes. A value; any thread.
class NODES_EXPORT OpenFiles
{
public:
    OpenFiles();

    /// The same file under whatever name.
    bool Has(const std::string &file) const;

private:
    std::set<std::pair<dev_t, ino_t>> m_files;
};

} // namespace Nodes
