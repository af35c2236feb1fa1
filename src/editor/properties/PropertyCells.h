#pragma once

#include <QVariant>

namespace Nodes {
class PropertyProxy;
}

namespace Editor {

struct PropertyRow;

/// What a cell of the property table shows, by Qt's own roles. `nodes` are those of the table.
QVariant propertyCell(const PropertyRow &row, int column, int role,
                      const Nodes::PropertyProxy &nodes);

} // namespace Editor
