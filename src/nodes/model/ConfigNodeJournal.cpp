#include "nodes/events/BasicEvent.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/services/AccessGuard.h"
#include "nodes/model/services/JournalSink.h"
#include "nodes/model/services/ModelServices.h"

namespace Nodes {

namespace {

/// What the system reports by itself is not the doing of whoever happens to be logged in.
bool isActOfUser(EventLevel level)
{
    return level == LevelAcknowledge || level == LevelSecurity || level == LevelAction;
}

// Names and places of nodes are fixed while the station runs, so any thread may read them then.
Result append(const ConfigNode &node, BasicEvent event)
{
    const ModelServices &services = node.GetServices();
    if (!services.journal)
        return Result(&node, Result::NotAvailable, "no core, no journal: " + event.text);
    if (services.access && isActOfUser(event.level))
        event.user = services.access->GetUserName(node);
    return services.journal->Append(std::move(event));
}

BasicEvent eventOf(EventLevel level, EventType type, const std::string &text)
{
    BasicEvent event;
    event.level = level;
    event.type = type;
    event.text = text;
    return event;
}

BasicEvent eventOf(EventLevel level, EventType type, const std::string &text,
                   const NodeLink &source)
{
    BasicEvent event = eventOf(level, type, text);
    event.source = source.GetLinkName(LinkNamePath);
    event.sourceNode = source;
    return event;
}

} // namespace

Result ConfigNode::StoreMessage(EventLevel level, const std::string &text,
                                const NodeLink &source) const
{
    return append(*this, eventOf(level, TypeMessage, text, source));
}

Result ConfigNode::StoreMessage(EventLevel level, const std::string &text,
                                const std::string &source) const
{
    BasicEvent event = eventOf(level, TypeMessage, text);
    event.source = source;
    return append(*this, std::move(event));
}

Result ConfigNode::StoreAlarm(EventLevel level, const std::string &text,
                              const NodeLink &source) const
{
    return append(*this, eventOf(level, TypeAlarmActive, text, source));
}

} // namespace Nodes
