#pragma once

#include <QStringList>

namespace Nodes {
class NodesCollection;
}

namespace Editor {

/// Texts of the colours that the nodes of the project have set, the most used first; none without a
/// project. A walk over the project: for when somebody asks to see them.
QStringList projectColors(const Nodes::NodesCollection *project, std::size_t limit);

} // namespace Editor
