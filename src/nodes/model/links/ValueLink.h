#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/SignalValue.h"

namespace Nodes {

/// A node together with the value it had when the pair was made. Plain value, any thread.
class ValueLink
{
public:
    ValueLink() = default;
    ValueLink(NodeLink node, SignalValue value) : m_node(node), m_value(std::move(value)) {}

    const NodeLink &GetNodeLink() const { return m_node; }
    const SignalValue &GetValue() const { return m_value; }

private:
    NodeLink m_node;
    SignalValue m_value;
};

} // namespace Nodes
