#pragma once

#include "nodes/model/validation/ProjectFinding.h"

#include <vector>

namespace Nodes {

class NodesCollection;

/// Drivers that talk to the same unit behind the same address: the device is asked twice, and many
/// serve one connection only. The later one is told.
std::vector<ProjectFinding> FindRepeatedDevices(const NodesCollection &project);
/// Signals of one device that stand for the same bits and are read alike: most probably one of them
/// was copied and forgotten. The later one is told. Different readings of one register, such as its
/// bits beside its number, are no fault.
std::vector<ProjectFinding> FindRepeatedAddresses(const NodesCollection &project);

} // namespace Nodes
