#pragma once

#include "utils/UtilsExport.h"

#include "nodes/events/BasicEvent.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/values/SignalValue.h"

#include <QMetaType>

Q_DECLARE_METATYPE(Nodes::BasicEvent)
Q_DECLARE_METATYPE(Nodes::BasicProperty *)
Q_DECLARE_METATYPE(Nodes::NodeLink)
Q_DECLARE_METATYPE(Nodes::NodeLinks)
Q_DECLARE_METATYPE(Nodes::SignalValue)

namespace Utils {

/// Makes the node-model types usable in queued signals; repeated calls do no harm.
UTILS_EXPORT void registerMetaTypes();

} // namespace Utils
