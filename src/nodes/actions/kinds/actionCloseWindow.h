#pragma once

#include "nodes/actions/BasicWindowAction.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Closes a configured window or the one that is active.
class NODES_EXPORT actionCloseWindow : public BasicWindowAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10004);
    struct Prop : BasicWindowAction::Prop
    {
        static constexpr PropertyId<bool> Current{16011, "current"};
    };

    static KindInfo Kind();
    void CollectDemands(AccessDemands &demands) const override;
    bool isCurrentWindow() const { return m_isCurrentWindow; }

private:
    bool m_isCurrentWindow = false;
};

} // namespace Nodes
