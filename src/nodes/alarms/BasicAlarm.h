#pragma once

#include "nodes/alarms/suppression/SuppressionScripts.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"

#include <memory>

namespace Nodes {

class AlarmCondition;
class BasicSignal;
class KindBuilder;
struct AlarmInputs;

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
        static constexpr PropertyId<std::string> Area{8008, "area"};
        static constexpr PropertyId<std::string> Cause{8009, "cause"};
        static constexpr PropertyId<std::string> Consequence{8010, "consequence"};
        static constexpr PropertyId<std::string> Response{8011, "response"};
        static constexpr PropertyId<int> ResponseTime{8012, "responseTime"};
        static constexpr PropertyId<bool> Latched{8013, "latched"};
        static constexpr PropertyId<int> Realarm{8014, "realarm"};
        static constexpr PropertyId<std::string> FirstUpGroup{8015, "firstUpGroup"};
        static constexpr PropertyId<NodeLink> SuppressWhen{8016, "suppressWhen"};
        static constexpr PropertyId<bool> SuppressInverted{8017, "suppressInverted"};
        static constexpr PropertyId<std::string> SuppressText{8018, "suppressText"};
        static constexpr PropertyId<std::string> SuppressScript{8019, "suppressScript"};
        static constexpr PropertyId<NodeLinks> SuppressInputs{8020, "suppressInputs"};
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
    /// The condition gone, it stays on the list until it is acknowledged and reset.
    bool isLatched() const { return m_isLatched; }
    /// Minutes after which it is announced again while nobody acknowledges it; 0: never.
    int GetRealarm() const { return m_realarm; }
    /// Alarms of the same name are a group, the first of which is marked; "": none.
    const std::string &GetFirstUpGroup() const { return m_firstUpGroup; }

    /// While this signal is true (or false, when inverted) the alarm is suppressed by design; a bad
    /// or stale signal suppresses nothing. Null: never. A script goes before it: a Lua expression
    /// that sees the signals of its inputs as s1, s2, ...
    BasicSignal *GetSuppressor() const;
    const std::string &GetSuppressScript() const { return m_suppressScript; }
    /// A signal that the suppression needs is not in the project.
    bool isSuppressorGone() const;
    bool isSuppressInverted() const { return m_isSuppressInverted; }
    /// "по проекту: " and the condition in words.
    std::string GetSuppressReason() const;

    /// Part of the plant: what is set here, else the name of the nearest folder above the alarm,
    /// else of the nearest above its signal; "" without any.
    std::string GetArea() const;
    // What the operator is told to understand the alarm and to act; "" where nothing is said.
    const std::string &GetCause() const { return m_cause; }
    const std::string &GetConsequence() const { return m_consequence; }
    const std::string &GetResponse() const { return m_response; }
    /// Minutes in which the response must be made; 0: not told.
    int GetResponseTime() const { return m_responseTime; }

    /// All that watching it takes, copied; it must have a signal.
    AlarmInputs MakeInputs(SuppressionScripts &scripts) const;
    /// The signal that the condition compares with; null for most kinds.
    virtual BasicSignal *GetReference() const { return nullptr; }
    /// Copies the settings into an object for the evaluating threads; never null.
    virtual std::unique_ptr<AlarmCondition> MakeCondition() const = 0;

    AuthPrivArray GetAvailablePrivs() const override;
    void Validate(ValidationResults &results) const override;

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;

    void SetOnDelay(int milliseconds) { m_onDelay = milliseconds; }

private:
    SuppressionScripts::Script makeScript() const;
    static void describeSuppression(KindBuilder &builder);
    static void describeGuidance(KindBuilder &builder);

    NodeLink m_signal;
    int m_onDelay = 0;
    int m_offDelay = 0;
    int m_priority = 3;
    std::string m_text;
    bool m_isAckRequired = true;
    ResourceLink m_sound;
    std::string m_area;
    std::string m_cause;
    std::string m_consequence;
    std::string m_response;
    int m_responseTime = 0;
    bool m_isLatched = false;
    int m_realarm = 0;
    std::string m_firstUpGroup;
    NodeLink m_suppressWhen;
    bool m_isSuppressInverted = false;
    std::string m_suppressText;
    std::string m_suppressScript;
    NodeLinks m_suppressInputs;
};

} // namespace Nodes
