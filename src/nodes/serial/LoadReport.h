#pragma once

#include "nodes/serial/LoadMessage.h"

#include <vector>

namespace Nodes {

/// Findings of one load, in the order they were made. A value.
class NODES_EXPORT LoadReport
{
public:
    /// Findings beyond this number are counted but not kept: a damaged file may have millions.
    static constexpr std::size_t MaximumMessages = 10000;

    void Add(LoadMessage message);
    const std::vector<LoadMessage> &GetMessages() const { return m_messages; }
    /// How many findings of that severity there were, kept or not.
    std::size_t GetCount(LoadMessage::SeverityType severity) const { return m_counts[severity]; }
    std::size_t GetSuppressedCount() const { return m_suppressed; }
    bool empty() const { return m_messages.empty(); }

private:
    std::vector<LoadMessage> m_messages;
    std::size_t m_counts[LoadMessage::Fatal + 1] = {};
    std::size_t m_suppressed = 0;
};

} // namespace Nodes
