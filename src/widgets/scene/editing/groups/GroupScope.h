#pragma once

#include "widgets/WidgetsExport.h"

#include <string>
#include <vector>

namespace Nodes {
class BasicWidget;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

/// How far an editor has gone into the groups of a layer: what stands right inside of `group` is
/// taken as one, be it an element or another group. Elsewhere the outermost groups are. GUI thread.
struct WIDGETS_EXPORT GroupScope
{
    const Nodes::ConfigNode *layer = nullptr; ///< null while in no group
    std::string group;                        ///< a Nodes::GroupPath

    bool isIn(const Nodes::BasicWidget &element) const;
    /// `group` for an element that is in it; else empty.
    std::string outerOf(const Nodes::BasicWidget &element) const;
    /// The group that is taken as one with that element; empty for an element that is one itself.
    std::string unitOf(const Nodes::BasicWidget &element) const;
    /// The elements in lots, each of which is taken as one, in the order of their first ones.
    std::vector<std::vector<Nodes::BasicWidget *>>
    units(const std::vector<Nodes::BasicWidget *> &elements) const;
};

} // namespace Widgets
