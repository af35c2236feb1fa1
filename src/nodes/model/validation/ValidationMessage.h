#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Result.h"

#include <string>

namespace Nodes {

/// One finding of the project check: what is wrong, where, and what to do, in Russian.
class NODES_EXPORT ValidationMessage
{
public:
    ValidationMessage(NodeLink node, Result result, std::string message)
        : m_node(std::move(node)), m_result(std::move(result)), m_message(std::move(message))
    {
    }

    const NodeLink &GetNodeLink() const { return m_node; }
    const Result &GetResult() const { return m_result; }
    const std::string &GetMessageStr() const { return m_message; }

private:
    NodeLink m_node;
    Result m_result;
    std::string m_message;
};

} // namespace Nodes
