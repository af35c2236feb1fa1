#pragma once

#include "nodes/actions/BasicWindowAction.h"

namespace Nodes {

/// Closes a configured window or the one that is active.
class NODES_EXPORT actionCloseWindow : public BasicWindowAction
{
public:
    static KindInfo Kind();
    void CollectDemands(AccessDemands &demands) const override;
    bool isCurrentWindow() const { return m_isCurrentWindow; }

private:
    bool m_isCurrentWindow = false;
};

} // namespace Nodes
