#pragma once

#include "nodes/NodesExport.h"

#include <string>

namespace Nodes {

/// One finding made while a project was read.
struct NODES_EXPORT LoadMessage
{
    enum SeverityType {
        Warning, ///< something this program does not know; kept and written back
        Error,   ///< something is wrong and does not work as configured; kept where possible
        Fatal    ///< the project could not be read
    };

    SeverityType severity = Warning;
    std::string file;
    int line = 0; ///< 1-based; 0 when the finding has no place in the file
    std::string path; ///< elements from the root: "project[Цех]/folder[Насосы]/label[Давление]"
    std::string text;       ///< Russian: what is wrong and what to do
    unsigned long node = 0; ///< id that the element gives; 0 when none is concerned
    /// What kind of finding it is, a word that stays the same whatever the text says: see
    /// FindingCode.
    std::string code;

    /// "file:line: path: text", parts that are missing left out.
    std::string ToString() const;
};

} // namespace Nodes
