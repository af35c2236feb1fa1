#pragma once

#include <QStringList>

namespace Nodes {
class NodesCollection;
struct PropertyDescriptor;
} // namespace Nodes

namespace Editor {

/// What the nodes of the project have set for that property, in alphabetical order; none without a
/// project. A walk over the project: for when somebody asks to see them.
QStringList projectTexts(const Nodes::NodesCollection *project,
                         const Nodes::PropertyDescriptor &descriptor);

} // namespace Editor
