#pragma once

#include "nodes/model/links/NodeLink.h"

namespace Editor {

/// Users and roles of the project a user subsystem belongs to, in order of the tree: they may stand
/// anywhere. GUI thread.
namespace SecurityNodes {

Nodes::NodeLinks users(const Nodes::NodeLink &authentication);
Nodes::NodeLinks roles(const Nodes::NodeLink &authentication);

} // namespace SecurityNodes

} // namespace Editor
