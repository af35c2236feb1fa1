#pragma once

#include "nodes/NodesExport.h"

#include <string>

namespace Nodes {

class ValidationMessage;
struct LoadMessage;

/// One thing that is wrong with a project, and where to mend it. A value; any thread.
struct NODES_EXPORT ProjectProblem
{
    enum enSeverity {
        Error, ///< something does not work as it is configured
        Remark ///< it works, but somebody should look at it
    };

    static ProjectProblem Of(const LoadMessage &message);
    /// GUI thread.
    static ProjectProblem Of(const ValidationMessage &message);

    enSeverity severity = Error;
    std::string code; ///< see FindingCode; scripts may rely on it
    std::string file;
    int line = 0;           ///< 1-based; 0 when it is not known
    unsigned long node = 0; ///< id; 0 when none is concerned
    std::string path;       ///< see ElementPath
    std::string property;   ///< key of the one to mend; "" when it is none in particular
    std::string text;       ///< Russian: what is wrong and what to do

    /// "file:line: path: text", parts that are missing left out.
    std::string ToString() const;
    /// "file:line:1: error: path: text [code]", as compilers tell what build servers and editors
    /// look for; remarks are warnings, and what has no line stands in the first.
    std::string ToCompilerLine() const;
    /// One JSON object on one line.
    std::string ToJson() const;

    bool operator==(const ProjectProblem &o) const
    {
        return node == o.node && line == o.line && severity == o.severity && code == o.code &&
               text == o.text;
    }
};

} // namespace Nodes
