#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

#include <string>
#include <string_view>

namespace Nodes {

class NodesCollection;
class NodesContainer;

/// A collection whose nodes can be written to bytes and read back: the clipboard and the undo
/// stack use it. The bytes are MessagePack; see the serialisation page of the docs.
class NODES_EXPORT BasicCollection
{
public:
    virtual ~BasicCollection() = default;

    /// Bytes of the contained nodes with their properties and descendants.
    std::string Serialize(const NodesContainer &nodes) const;
    /// Reads such bytes into detached nodes owned by the collection (see
    /// NodesCollection::TakeClone) under fresh ids; links among them follow. Damaged or hostile
    /// bytes give ParseError or LimitExceeded and no node. What this program does not know is
    /// skipped: success then has a detail that lists it.
    [[nodiscard]] Result Deserialize(std::string_view bytes, NodesContainer &nodes);

private:
    virtual NodesCollection &project() = 0;
};

} // namespace Nodes
