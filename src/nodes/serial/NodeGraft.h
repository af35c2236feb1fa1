#pragma once

#include "nodes/model/links/LinkWalk.h"
#include "nodes/values/Result.h"

#include <memory>

namespace Nodes {

/// Gives `target` everything of a detached node of its kind: name, description, properties, what
/// is kept aside, and the children. Links that name an old id follow to the new one, those to the
/// detached node itself to `target`. LimitExceeded leaves the target unchanged.
[[nodiscard]] Result Graft(ConfigNode &target, std::unique_ptr<ConfigNode> detached,
                           const IdMap &ids);

} // namespace Nodes
