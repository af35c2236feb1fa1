#pragma once

#include "nodes/actions/BasicAction.h"

namespace Nodes {

/// Puts an entry of its own into the event journal, with the current user.
class NODES_EXPORT actionCreateEvent : public BasicAction
{
public:
    static KindInfo Kind();

    /// InvalidArgument without a text; else what the journal answers. Any thread.
    Result CreateEvent() const;

private:
    std::string m_text;
    int m_level = LevelInformation;
    std::string m_source = "System";
    NodeLink m_sourceNode; // in place of the text while it exists
};

} // namespace Nodes
