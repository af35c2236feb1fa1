#pragma once

#include "editor/properties/PropertyEdits.h"

#include "nodes/model/links/NodeLink.h"

#include <functional>

namespace Editor {

/// What a property table asks of the window that it stands in. A value.
struct PropertyHost
{
    PropertyEdits::Push push;
    /// Shows a node in the tree of the project; may be empty.
    std::function<void(const Nodes::NodeLink &)> reveal{};
};

} // namespace Editor
