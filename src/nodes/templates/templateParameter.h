#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

/// Formal parameter of a template window or composition: what the template's elements and actions
/// link to where each instance has something of its own. In an instance every such link leads to
/// the node that the action gives for the parameter; without one it stays here, and here is never a
/// value, so the elements show bad quality.
///
/// A parameter below another one stands for the node of that name below whatever the upper one
/// stands for: give the pump, and its signals follow.
class NODES_EXPORT templateParameter : public BasicSignal
{
public:
    static constexpr auto Code = NodeType::SubtypeTemplateParameter;
    struct Prop : BasicSignal::Prop
    {
        static constexpr PropertyId<NodeLink> Default{5111, "default"};
    };

    static KindInfo Kind();
    SignalOrigin GetOrigin() const override { return SignalOrigin::Process; }

    /// Taken when the action does not name the parameter at all; empty: there is no default.
    const NodeLink &GetDefault() const { return m_default; }

    void Validate(ValidationResults &results) const override;

protected:
    Result DoWrite(const SignalValue &value) override;

private:
    NodeLink m_default;
};

} // namespace Nodes
