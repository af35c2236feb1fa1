#include "nodes/serial/LoadReport.h"

namespace Nodes {

void LoadReport::Add(LoadMessage message)
{
    ++m_counts[message.severity];
    // The fatal one explains why there is no project: it is kept whatever came before.
    if (m_messages.size() < MaximumMessages || message.severity == LoadMessage::Fatal)
        m_messages.push_back(std::move(message));
    else
        ++m_suppressed;
}

} // namespace Nodes
