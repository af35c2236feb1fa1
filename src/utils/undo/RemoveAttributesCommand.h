#pragma once

#include "utils/UtilsExport.h"
#include "utils/undo/NodeCommand.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/NodeLink.h"

#include <string>
#include <vector>

namespace Utils {

/// Removes attributes of the project file that no property took (see
/// BasicNode::GetForeignAttributes). Undo brings them back in their order.
class UTILS_EXPORT RemoveAttributesCommand : public NodeCommand
{
public:
    RemoveAttributesCommand(const Nodes::NodeLink &node, std::vector<std::string> keys,
                            QUndoCommand *parent = nullptr);
    ~RemoveAttributesCommand() override;

protected:
    /// NotFound when the node has none of them.
    Nodes::Result apply() override;
    Nodes::Result revert() override;

private:
    Nodes::NodeLink m_node;
    std::vector<std::string> m_keys;
    Nodes::BasicNode::Attributes m_before;
};

} // namespace Utils
