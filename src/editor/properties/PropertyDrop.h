#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QStringList>

class QMimeData;

namespace Nodes {
class ConfigNode;
struct PropertyDescriptor;
} // namespace Nodes

namespace Editor {

struct PropertyRow;

/// Nodes dragged from a tree and dropped on a property that refers to nodes.
class PropertyDrop
{
public:
    static QStringList mimeTypes();
    /// What is dragged, as far as it stands in the project.
    static Nodes::NodeLinks nodes(const QMimeData *mime, const Nodes::NodesCollection *project);
    /// Whether the property may refer to that node.
    static bool fits(const Nodes::PropertyDescriptor &descriptor, const Nodes::ConfigNode &node);
    /// Whether the row refers to nodes and takes at least one, or exactly one, of these.
    static bool isTaken(const PropertyRow &row, const Nodes::NodeLinks &nodes);
    /// Text of the row's value with the nodes: in place of the link, or added to the list.
    static QString merged(const PropertyRow &row, const Nodes::NodeLinks &nodes);
};

} // namespace Editor
