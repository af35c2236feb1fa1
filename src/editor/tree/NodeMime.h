#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QStringList>

class QMimeData;

namespace Nodes {
class NodesCollection;
} // namespace Nodes

namespace Editor {

/// Nodes that are dragged out of the project tree, in the formats that scenes read, and in one of
/// the tree's own that says which open project they stand in. GUI thread.
namespace NodeMime {

/// By path, by id, and the tree's own.
QStringList formats();
/// Owned by the caller. Paths are left out when one of them would lead to another node: whoever
/// reads them by path would take that one. Null without nodes.
QMimeData *make(const Nodes::NodesCollection &project, const Nodes::NodeLinks &nodes);
/// Nodes that were dragged out of a tree of this very project, in this process; else none.
Nodes::NodeLinks own(const QMimeData &data, const Nodes::NodesCollection &project);

} // namespace NodeMime

} // namespace Editor
