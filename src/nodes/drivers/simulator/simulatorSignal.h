#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

/// A signal computed by a Lua formula; stands below a simulatorDriver. When it may be written, the
/// written value is what the formula sees as `value` from the next step on.
class NODES_EXPORT simulatorSignal : public BasicSignal
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x5003);
    struct Prop : BasicSignal::Prop
    {
        static constexpr PropertyId<std::string> Formula{5301, "formula"};
        static constexpr PropertyId<std::string> Initial{5302, "initial"};
    };

    static KindInfo Kind();

    const std::string &GetFormula() const { return m_formula; }
    /// `value` before the first step, as the signal's type; the type's zero when none is set.
    SignalValue GetInitialValue() const;

    void Validate(ValidationResults &results) const override;

private:
    std::string m_formula;
    std::string m_initialValue;
};

} // namespace Nodes
