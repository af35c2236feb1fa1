#pragma once

#include "nodes/model/NodeType.h"

#include <QString>

#include <vector>

namespace Nodes {
struct KindInfo;
}

namespace Editor {

/// Nodes that belong to their parent as lines to a list: states, axes, columns. Shown as a table of
/// the parent's properties. A value.
struct ChildFamily
{
    Nodes::NodeType::enNodeType family;
    QString title;                                ///< Russian, plural
    std::vector<const Nodes::KindInfo *> kinds{}; ///< that may be added; never empty
};

/// Those of a kind, in the order of its children; none for what holds nodes of any sort, such as
/// folders, and for what is drawn in a scene.
std::vector<ChildFamily> childFamilies(const Nodes::KindInfo &kind);

} // namespace Editor
