#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

#include <boost/any.hpp>

#include <string>
#include <string_view>

namespace Nodes {

class BasicNode;
class NodePaths;
struct PropertyDescriptor;

/// Values of properties as people read and write them in tables: choices by their Russian names,
/// "да" and "нет", decimal commas, nodes by their paths. GUI thread.
namespace CellText {

/// What stands in the cell; "" for a secret, whatever it is.
NODES_EXPORT std::string Show(const PropertyDescriptor &descriptor, const BasicNode &node);
/// Takes what Show gives, what project files have, and what spreadsheets make of both: decimal
/// points and commas, blanks within numbers, "1"/"0", "истина"/"ложь". On failure the detail says
/// in Russian what is wrong and what would do; `value` is untouched. Links are looked for among
/// `paths`.
[[nodiscard]] NODES_EXPORT Result Read(const PropertyDescriptor &descriptor, std::string_view text,
                                       const NodePaths &paths, boost::any &value);
/// Whether the node's property is that value already, however a text writes it.
NODES_EXPORT bool Holds(const PropertyDescriptor &descriptor, const BasicNode &node,
                        const boost::any &value);
/// What may stand in the cell, for people: "от 0 до 9", "да, нет", "Строка, Логический"; "" for
/// anything.
NODES_EXPORT std::string Admissible(const PropertyDescriptor &descriptor);

} // namespace CellText

} // namespace Nodes
