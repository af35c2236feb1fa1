#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/SignalValue.h"
#include "nodes/values/ValueSubscription.h"
#include "nodes/visual/AlarmMark.h"
#include "nodes/visual/elements/ValueExtremes.h"

namespace Nodes {

class BasicSignal;

/// One line of a recorder display. Keeps the extremes of its signal from the first start of the
/// display on, also while the display is not shown.
class NODES_EXPORT recorderChannel : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x9011);
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Signal{9201, "signal"};
        static constexpr PropertyId<std::string> Text{9202, "text"};
        static constexpr PropertyId<int> Decimals{9203, "decimals"};
    };

    recorderChannel();
    ~recorderChannel() override;
    static KindInfo Kind();

    BasicSignal *GetSignal() const;
    /// The signal's value, as far as the current user may view it; an error value without one.
    SignalValue GetValue() const;
    /// The node's name when no text is set.
    const std::string &GetText() const { return m_text.empty() ? GetName() : m_text; }
    /// Number with the channel's or the signal's decimals, without unit.
    std::string FormatNumber(double number) const;
    std::string GetUnit() const;
    /// Of the signal's alarms; none without a signal.
    AlarmMark GetAlarmMark(const SignalValue &value) const;

    /// Without numbers for a user who may not view the signal.
    ValueExtremes::State GetExtremes() const;
    /// Begins anew with the present value, on behalf of the current user: AccessDenied without the
    /// command privilege. Both outcomes are journalled.
    [[nodiscard]] Result ResetExtremes();

    /// Begins to follow the signal; the second call changes nothing.
    Result Start() override;

protected:
    void OnPropertyChanged(const PropertyDescriptor &descriptor) override;

private:
    void follow();

    NodeLink m_signal;
    std::string m_text;
    int m_decimals = -1;
    std::shared_ptr<ValueExtremes> m_extremes;
    ValueSubscription m_values;
};

} // namespace Nodes
