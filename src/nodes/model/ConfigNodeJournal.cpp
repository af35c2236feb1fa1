#include "nodes/model/ConfigNodeJournal.h"

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

} // namespace

BasicEvent EventAt(const NodeLink &source, EventLevel level, std::string text, EventType type)
{
    BasicEvent event;
    event.level = level;
    event.type = type;
    event.text = std::move(text);
    event.source = source.GetLinkName(LinkNamePath);
    event.sourceNode = source;
    return event;
}

Result StoreEvent(const ConfigNode &node, BasicEvent event)
{
    const ModelServices &services = node.GetServices();
    if (!services.journal)
        return Result(&node, Result::NotAvailable, "no core, no journal: " + event.text);
    if (services.access && isActOfUser(event.level))
        event.user = services.access->GetUserName(node);
    return services.journal->Append(std::move(event));
}

void StoreAct(const ConfigNode &node, const Result &result, NodeAct act)
{
    if (!node.GetServices().journal)
        return;
    BasicEvent event = result ? EventAt(node.GetNodeLink(), LevelAction, act.done)
                              : EventAt(node.GetNodeLink(), LevelSecurity,
                                        act.refused + (": " + result.GetResultTranslated()));
    event.oldValue = std::move(act.oldValue);
    event.newValue = std::move(act.newValue);
    (void)StoreEvent(node, std::move(event));
}

Result ConfigNode::StoreMessage(EventLevel level, const std::string &text,
                                const NodeLink &source) const
{
    return StoreEvent(*this, EventAt(source, level, text));
}

Result ConfigNode::StoreMessage(EventLevel level, const std::string &text,
                                const std::string &source) const
{
    BasicEvent event = EventAt(NodeLink(), level, text);
    event.source = source;
    return StoreEvent(*this, std::move(event));
}

Result ConfigNode::StoreAlarm(EventLevel level, const std::string &text,
                              const NodeLink &source) const
{
    return StoreEvent(*this, EventAt(source, level, text, TypeAlarmActive));
}

} // namespace Nodes
