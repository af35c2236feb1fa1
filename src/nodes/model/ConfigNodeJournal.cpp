#include "nodes/auth/AccessCheck.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/system/systemCore.h"

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
    const systemCore *core = node.GetCore();
    if (!core)
        return Result(&node, Result::NotAvailable, "no core, no journal: " + event.text);
    if (isActOfUser(event.level))
        event.user = UserNameFor(node);
    return core->GetJournal().Append(std::move(event));
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
