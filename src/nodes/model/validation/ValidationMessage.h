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
    /// `code`: see FindingCode; null names it after the result.
    ValidationMessage(NodeLink node, Result result, std::string message, const char *code = nullptr)
        : m_node(std::move(node)),
          m_result(std::move(result)),
          m_message(std::move(message)),
          m_code(code)
    {
    }

    const NodeLink &GetNodeLink() const { return m_node; }
    const Result &GetResult() const { return m_result; }
    const std::string &GetMessageStr() const { return m_message; }
    /// Null when the kind of node gives the finding no word of its own.
    const char *GetCode() const { return m_code; }

private:
    NodeLink m_node;
    Result m_result;
    std::string m_message;
    const char *m_code;
};

} // namespace Nodes
