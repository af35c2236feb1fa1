#pragma once

#include <QStringList>

#include <vector>

namespace Nodes {
struct KindInfo;
struct PropertyDescriptor;
} // namespace Nodes

namespace Editor {

class PropertyModel;

/// Kinds of nodes that are made for a list and for nothing else, such as actions; none for lists of
/// signals, windows and other nodes that have their place in the project.
std::vector<const Nodes::KindInfo *> listKinds(const Nodes::PropertyDescriptor &descriptor);

/// Makes a node of the kind and gives the nodes of the model the list `ids` with it at the end, as
/// one step. It is put beside the first node of the list that may have it for a sibling, else
/// nearest above the element; "" when done, else why not, in Russian.
QString addListNode(PropertyModel &model, const Nodes::PropertyDescriptor &descriptor,
                    const QStringList &ids, const Nodes::KindInfo &kind);

} // namespace Editor
