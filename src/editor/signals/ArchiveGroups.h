#pragma once

#include "nodes/model/links/NodeLink.h"

namespace Editor {

class Workspace;

/// Archiving of many signals at once. GUI thread.
namespace ArchiveGroups {

/// Adds those of the nodes, signals, that nothing archives yet to the project's first archive
/// group, as one step. Tells what was done, or that there is no archive to make a group in.
void add(Workspace &workspace, const Nodes::NodeLinks &nodes);

} // namespace ArchiveGroups

} // namespace Editor
