#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <string_view>

namespace Nodes {

/// Where an element stands among the groups of its layer: the names of its groups, outermost first,
/// separated by '/'. Empty for none. What follows an empty name means nothing.
namespace GroupPath {

/// Whether an element of that path stands in the group `outer`, at any depth. All stand in the
/// empty one.
NODES_EXPORT bool IsIn(std::string_view outer, std::string_view path);
/// The group right inside of `outer` in which an element of that path stands; empty for one that
/// stands in `outer` itself or not in it at all.
NODES_EXPORT std::string Step(std::string_view outer, std::string_view path);
/// The group around it; empty around the outermost.
NODES_EXPORT std::string Outside(std::string_view group);
/// Last name of it.
NODES_EXPORT std::string Name(std::string_view group);
NODES_EXPORT std::string Join(std::string_view outer, std::string_view inner);
/// What of a path is left inside of `outer`, in which it is.
NODES_EXPORT std::string Rest(std::string_view outer, std::string_view path);

} // namespace GroupPath

} // namespace Nodes
