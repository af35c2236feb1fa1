#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"

#include <memory>

namespace Nodes {

class AlarmCondition;
class BasicSignal;
class KindBuilder;

/// Settings of one alarm on one signal. What it watches for is the kind's: see MakeCondition. The
/// alarm's state lives in systemAlarming.
class NODES_EXPORT BasicAlarm : public ConfigNode
{
public:
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Signal{8001, "signal"};
        static constexpr PropertyId<int> OnDelay{8002, "onDelay"};
        static constexpr PropertyId<int> OffDelay{8003, "offDelay"};
        static constexpr PropertyId<int> Priority{8004, "priority"};
        static constexpr PropertyId<std::string> Text{8005, "text"};
        static constexpr PropertyId<bool> AckRequired{8006, "ackRequired"};
        static constexpr PropertyId<ResourceLink> Sound{8007, "sound"};
    };

    /// The signal linked, else the parent when that is a signal; null without either.
    BasicSignal *GetSignal() const;
    /// Milliseconds the condition must last before the alarm is raised, and be gone before it
    /// returns to normal.
    int GetOnDelay() const { return m_onDelay; }
    int GetOffDelay() const { return m_offDelay; }
    /// 1 highest to 4 lowest.
    int GetPriority() const { return m_priority; }
    /// What the operator reads; made from the signal's and the alarm's names when none is set.
    std::string GetText() const;
    /// The alarm stays on the list until it is acknowledged.
    bool isAckRequired() const { return m_isAckRequired; }
    /// Plays while the alarm waits for its acknowledgement.
    const ResourceLink &GetSound() const { return m_sound; }

    /// Copies the settings into an object for the evaluating threads; never null.
    virtual std::unique_ptr<AlarmCondition> MakeCondition() const = 0;

    AuthPrivArray GetAvailablePrivs() const override;
    void Validate(ValidationResults &results) const override;

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;

    void SetOnDelay(int milliseconds) { m_onDelay = milliseconds; }

private:
    NodeLink m_signal;
    int m_onDelay = 0;
    int m_offDelay = 0;
    int m_priority = 3;
    std::string m_text;
    bool m_isAckRequired = true;
    ResourceLink m_sound;
};

} // namespace Nodes
