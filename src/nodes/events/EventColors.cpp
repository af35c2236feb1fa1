#include "nodes/events/EventColors.h"

namespace Nodes {

HasEventColors::~HasEventColors() = default;

} // namespace Nodes
