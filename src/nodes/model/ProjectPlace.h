#pragma once

namespace Nodes {

class NodesCollection;

/// Where nodes find their project. Never freed, so that a copy or a removed node which somebody
/// still holds after the project was unloaded finds nothing instead of dead memory.
struct ProjectPlace
{
    NodesCollection *project = nullptr; ///< null once it is gone; written on the GUI thread
};

} // namespace Nodes
