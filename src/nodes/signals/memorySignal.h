#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

/// A signal whose source is this process itself: set by scripts, actions and operators.
class NODES_EXPORT memorySignal : public BasicSignal
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x5001);
    struct Prop : BasicSignal::Prop
    {
        static constexpr PropertyId<std::string> Initial{5101, "initial"};
        static constexpr PropertyId<bool> Journal{27200, "journal"};
    };

    static KindInfo Kind();
    SignalOrigin GetOrigin() const override { return SignalOrigin::Process; }
    /// Publishes the configured initial value when nothing was published yet.
    Result Start() override;

protected:
    Result DoWrite(const SignalValue &value) override;
    bool IsJournalled() const override { return m_isJournalled; }

private:
    std::string m_initialValue;
    bool m_isJournalled = true; // what screens keep for themselves is no news to anybody
};

} // namespace Nodes
