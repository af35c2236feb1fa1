#pragma once

#include "nodes/NodesExport.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Nodes {

/// One property, name or description that two versions of a node differ in. Texts are what people
/// read: names of choices, paths of nodes; secrets are never told.
struct PropertyDifference
{
    enum enWhat {
        Value,       ///< of a property
        Name,        ///< of the node
        Description, ///< of the node
        Foreign      ///< attribute that no property takes
    };

    enWhat what = Value;
    unsigned valueId = 0; ///< 0 unless it is a property
    std::string name;     ///< Russian
    std::string before;
    std::string after;
};

/// What became of one node from one version of a project to another. A value; any thread.
struct NODES_EXPORT NodeDifference
{
    bool isAdded = false;     ///< with everything below it that is new too
    bool isRemoved = false;   ///< with everything below it that is gone too
    bool isMoved = false;     ///< to another parent
    bool isReordered = false; ///< among its siblings
    unsigned long before = 0; ///< id in the first project; 0 when it is added
    unsigned long after = 0;  ///< id in the second project; 0 when it is removed
    std::string path;         ///< names from the root; in the second project unless it is removed
    std::string pathBefore;   ///< in the first project, of one that moved or was renamed
    std::string kind;         ///< Russian
    std::size_t below = 0;    ///< nodes that were added or removed with it
    std::vector<PropertyDifference> properties;

    /// Russian, one line each: "изменено: Насосы/К1.Насос1: «Ширина»: 100 → 120".
    std::vector<std::string> ToLines() const;
    /// One JSON object on one line.
    std::string ToJson() const;
};

} // namespace Nodes
