#pragma once

#include <vector>

namespace Nodes {
class BasicSignal;
class systemCore;
} // namespace Nodes

namespace Host {

/// Signals of the core's project whose history its local station keeps, in the order of their ids,
/// each once.
std::vector<const Nodes::BasicSignal *> archivedSignals(const Nodes::systemCore &core);
/// All signals that this station has.
std::vector<const Nodes::BasicSignal *> stationSignals(const Nodes::systemCore &core);

} // namespace Host
