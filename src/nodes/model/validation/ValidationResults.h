#pragma once

#include "nodes/model/validation/ValidationMessage.h"

#include <vector>

namespace Nodes {

/// Findings of a project check, in the order they were made.
class ValidationResults
{
public:
    /// A result with the key of a property as its detail says which one to mend.
    void Add(const NodeLink &node, Result result, std::string message, const char *code = nullptr)
    {
        m_messages.emplace_back(node, std::move(result), std::move(message), code);
    }
    bool empty() const { return m_messages.empty(); }
    std::size_t size() const { return m_messages.size(); }
    const ValidationMessage &operator[](std::size_t index) const { return m_messages[index]; }
    std::vector<ValidationMessage>::const_iterator begin() const { return m_messages.begin(); }
    std::vector<ValidationMessage>::const_iterator end() const { return m_messages.end(); }

private:
    std::vector<ValidationMessage> m_messages;
};

} // namespace Nodes
