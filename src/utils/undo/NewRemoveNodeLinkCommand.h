#pragma once

#include "utils/undo/RemoveNodeLinkGroup.h"

namespace Utils {

/// Removal of one node; see RemoveNodeLinkGroup.
class UTILS_EXPORT NewRemoveNodeLinkCommand : public RemoveNodeLinkGroup
{
public:
    NewRemoveNodeLinkCommand(const Nodes::NodeLink &node, const Nodes::NodeLink &nodeParent,
                             QUndoCommand *parent = nullptr);
    ~NewRemoveNodeLinkCommand() override;
};

} // namespace Utils
