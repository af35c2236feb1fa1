#pragma once

#include "nodes/actions/BasicTemplateAction.h"

namespace Nodes {

class windowTemplate;

/// Opens an instance of a template window, or brings forward one with the same arguments.
class NODES_EXPORT actionShowWindowTemplate : public BasicTemplateAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1000e);

    static KindInfo Kind();
    /// Null when the window is none or no template.
    windowTemplate *GetWindowTemplate() const;
    ConfigNode *GetTemplate() const override;
    void CollectDemands(AccessDemands &demands) const override;
};

} // namespace Nodes
