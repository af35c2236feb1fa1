#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Writes a fixed value to a signal on behalf of the current user.
class NODES_EXPORT actionWriteValue : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10005);
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Signal{16020, "signal"};
        static constexpr PropertyId<std::string> Value{16021, "value"};
    };

    static KindInfo Kind();
    void CollectDemands(AccessDemands &demands) const override;

    const NodeLink &GetSignalLink() const { return m_signal; }
    /// NotFound without a target; else what the signal answers (it checks rights and journals).
    [[nodiscard]] Result Write() const;

private:
    NodeLink m_signal;
    std::string m_value;
};

} // namespace Nodes
