#pragma once

namespace Nodes {

class ConfigNode;

/// Tells all who show or watch a signal of the subtree that it left its project: they hear of a
/// bad value instead of keeping the last one for ever. GUI thread, after the links to it broke.
void AnnounceRemoval(const ConfigNode &subtree);
/// The subtree is back. Signals that no driver feeds are good again; the others wait for theirs.
void AnnounceReturn(const ConfigNode &subtree);

} // namespace Nodes
