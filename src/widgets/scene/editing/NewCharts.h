#pragma once

namespace Nodes {
class ConfigNode;
}

namespace Widgets::NewCharts {

/// A chart that is about to enter the tree gets a group with its axes, so that lines are all it
/// needs; nothing for other kinds. GUI thread.
void complete(Nodes::ConfigNode &element);

} // namespace Widgets::NewCharts
