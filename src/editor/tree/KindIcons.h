#pragma once

#include "nodes/model/NodeType.h"

#include <QIcon>

namespace Editor {

/// The small pictures of node kinds: a kind's own, else its family's. Loaded once each. GUI thread.
namespace KindIcons {

QIcon of(Nodes::NodeType type);

} // namespace KindIcons

} // namespace Editor
