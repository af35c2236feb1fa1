#pragma once

#include <memory>
#include <string>

namespace Nodes {
class NodesCollection;
}

namespace Editor {

/// A project with one station that has its subsystems and a folder for signals, and nothing to see
/// yet. `name` becomes the name of its root; an empty one gets a name all the same.
std::unique_ptr<Nodes::NodesCollection> MakeNewProject(const std::string &name);

} // namespace Editor
