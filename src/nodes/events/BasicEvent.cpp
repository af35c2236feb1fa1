#include "nodes/events/BasicEvent.h"

#include <tuple>

namespace Nodes {

namespace {

auto fields(const BasicEvent &e)
{
    return std::tie(e.id, e.time, e.level, e.type, e.text, e.source, e.sourceNode, e.user,
                    e.oldValue, e.newValue, e.alarmState, e.priority, e.occurrence, e.raised,
                    e.acknowledged, e.returned, e.area, e.isFirstUp, e.reminders, e.comment,
                    e.hiddenBy, e.hiddenReason, e.hiddenUntil);
}

} // namespace

bool BasicEvent::operator==(const BasicEvent &other) const
{
    return fields(*this) == fields(other);
}

} // namespace Nodes
