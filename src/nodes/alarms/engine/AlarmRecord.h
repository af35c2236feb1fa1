#pragma once

#include "nodes/events/BasicEvent.h"

namespace Nodes {

struct AlarmMemory;
struct AlarmSettings;

/// The alarm as a list shows it; level and user are those of `type` done by `user`.
BasicEvent AlarmRecord(const AlarmSettings &settings, const AlarmMemory &memory, EventType type,
                       const std::string &user);

} // namespace Nodes
