#pragma once

#include "utils/undo/CommandGroup.h"

#include "nodes/model/links/NodeLink.h"

#include <vector>

namespace Utils {

/// One link that is to lead elsewhere.
struct LinkReplacement
{
    Nodes::NodeLink node; ///< whose property it is
    unsigned valueId = 0; ///< of the property
    Nodes::NodeLink from;
    Nodes::NodeLink to; ///< empty: the link goes
};

/// Makes links of any number of nodes lead to other nodes, all or none. A list of links
/// names the new one once, in the first place.
class UTILS_EXPORT ReplaceLinksCommand : public CommandGroup
{
public:
    explicit ReplaceLinksCommand(const std::vector<LinkReplacement> &links,
                                 QUndoCommand *parent = nullptr);
    ~ReplaceLinksCommand() override;
};

} // namespace Utils
