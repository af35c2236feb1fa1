#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

#include <string>
#include <string_view>

namespace Nodes {

/// Who edits a project. A value; any thread.
struct NODES_EXPORT ProjectHolder
{
    std::string user;
    std::string host;
    long process = 0;
    Timestamp since = 0;

    static ProjectHolder Myself();
    /// From the text of a hold file, which may say anything; without a name when it tells nobody.
    static ProjectHolder FromText(std::string_view text);
    std::string ToText() const;

    bool isSameProcess(const ProjectHolder &o) const
    {
        return host == o.host && process == o.process;
    }
    /// Russian: "ivanov на ws-12 с 22.11.2026 14:05 (процесс 4711)".
    std::string ToWords() const;
};

} // namespace Nodes
