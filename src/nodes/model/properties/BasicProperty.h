#pragma once

#include "nodes/NodesExport.h"

#include <boost/any.hpp>

#include <string>

namespace Nodes {

class BasicNode;
struct PropertyDescriptor;

/// One property of one node: what change notifications carry. Owned by its node, made on first
/// use, valid as long as the node. GUI thread.
class NODES_EXPORT BasicProperty
{
public:
    BasicProperty(BasicNode *node, const PropertyDescriptor *descriptor);

    /// Id unique in the project's kinds: the owner's id is not part of it.
    unsigned GetId() const;
    /// Id of the value it carries (BasicWidget::Prop::X, ...); see PropertyId.
    unsigned GetValueId() const;
    BasicNode *GetNode() const { return m_node; }
    const PropertyDescriptor &GetDescriptor() const { return *m_descriptor; }
    /// Current value; its C++ type follows from the descriptor's PropertyType.
    boost::any GetPropertyValue() const;
    /// Text form of the current value, as project files write it.
    std::string ToString() const;
    /// Russian name for the property grid and undo texts.
    std::string GetName() const;

private:
    BasicNode *m_node;
    const PropertyDescriptor *m_descriptor;
};

} // namespace Nodes
