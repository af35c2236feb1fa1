#pragma once

#include "nodes/NodesExport.h"
#include "nodes/events/BasicEvent.h"

namespace Nodes {

/// Display strings of an event, in Russian. A value made from a BasicEvent.
class NODES_EXPORT EventInfo
{
public:
    EventInfo() = default;
    explicit EventInfo(BasicEvent event) : m_event(std::move(event)) {}

    /// True when the event differs from the one held, which it then replaces.
    bool Update(const BasicEvent &event);
    const BasicEvent &GetEvent() const { return m_event; }

    std::string GetEventLevel() const;
    std::string GetEventType() const;
    /// State and priority in words, the heading events are grouped under.
    std::string GetGroupString() const;

private:
    BasicEvent m_event;
};

} // namespace Nodes
