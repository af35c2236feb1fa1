#pragma once

#include "nodes/actions/BasicAction.h"

namespace Nodes {

/// Writes a fixed value to a signal on behalf of the current user.
class NODES_EXPORT actionWriteValue : public BasicAction
{
public:
    static KindInfo Kind();
    void CollectDemands(AccessDemands &demands) const override;

    /// NotFound without a target; else what the signal answers (it checks rights and journals).
    [[nodiscard]] Result Write() const;

private:
    NodeLink m_signal;
    std::string m_value;
};

} // namespace Nodes
