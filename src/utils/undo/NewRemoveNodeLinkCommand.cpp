#include "utils/undo/NewRemoveNodeLinkCommand.h"

namespace Utils {

NewRemoveNodeLinkCommand::NewRemoveNodeLinkCommand(const Nodes::NodeLink &node,
                                                   const Nodes::NodeLink &nodeParent,
                                                   QUndoCommand *parent)
    : RemoveNodeLinkGroup(nodeParent, {node}, parent)
{
}

NewRemoveNodeLinkCommand::~NewRemoveNodeLinkCommand() = default;

} // namespace Utils
