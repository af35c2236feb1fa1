#pragma once

#include "editor/properties/PropertyRow.h"

#include <memory>

namespace Nodes {
class NodesCollection;
class PropertyProxy;
} // namespace Nodes

namespace Editor {

/// Makes the rows of a selection: what all its nodes have, below headings. The row returned is
/// above all and not shown. Values are not filled in.
std::unique_ptr<PropertyRow> makePropertyRows(const Nodes::PropertyProxy &nodes);

/// Takes over what the nodes have now in the row and in those below it; true when it looks
/// different from before.
bool refreshPropertyRow(PropertyRow &row, const Nodes::PropertyProxy &nodes);

/// Whether both tables have the same rows, so that one can take the other's place unseen.
bool isSameTable(const PropertyRow &left, const PropertyRow &right);

} // namespace Editor
