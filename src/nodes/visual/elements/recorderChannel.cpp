#include "nodes/visual/elements/recorderChannel.h"

#include "nodes/model/ConfigNodeJournal.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/signals/ValueText.h"
#include "nodes/visual/elements/widgetRecorderDigitalDisplay.h"

namespace Nodes {

recorderChannel::recorderChannel() : m_extremes(std::make_shared<ValueExtremes>()) {}
recorderChannel::~recorderChannel() = default;

KindInfo recorderChannel::Kind()
{
    return KindBuilder::For<recorderChannel>("recorderChannel", "Recorder channel", "Канал табло")
        .Property<&recorderChannel::m_signal>(Prop::Signal, "Signal", "Сигнал")
        .Refers({NodeType::TypeSignal})
        .Property<&recorderChannel::m_text>(Prop::Text, "Text", "Текст")
        .Property<&recorderChannel::m_decimals>(Prop::Decimals, "Decimals", "Знаков после запятой")
        .Range(-1, 9);
}

BasicSignal *recorderChannel::GetSignal() const
{
    return dynamic_cast<BasicSignal *>(m_signal.GetNode());
}

SignalValue recorderChannel::GetValue() const
{
    const BasicSignal *signal = GetSignal();
    return signal ? signal->GetShownValue() : SignalValue(Result(this, Result::NotFound, "signal"));
}

std::string recorderChannel::FormatNumber(double number) const
{
    return ValueText(GetSignal(), m_decimals).OfNumber(number);
}

std::string recorderChannel::GetUnit() const
{
    const BasicSignal *signal = GetSignal();
    return signal ? signal->GetUnit() : std::string();
}

AlarmMark recorderChannel::GetAlarmMark(const SignalValue &value) const
{
    const BasicSignal *signal = GetSignal();
    return signal ? AlarmMark::Of(*signal, value) : AlarmMark();
}

ValueExtremes::State recorderChannel::GetExtremes() const
{
    ValueExtremes::State state = m_extremes->Get();
    const BasicSignal *signal = GetSignal();
    if (signal && IsForbiddenToView(*signal)) {
        state.minimum.reset();
        state.maximum.reset();
    }
    return state;
}

void recorderChannel::follow()
{
    const BasicSignal *signal = GetSignal();
    if (!signal) {
        m_values.Disconnect();
        return;
    }
    const auto extremes = m_extremes;
    extremes->Take(signal->GetValue());
    m_values.Connect(signal->GetCell(),
                     [extremes](const SignalValue &value) { extremes->Take(value); });
}

Result recorderChannel::Start()
{
    if (!m_values.IsConnected()) {
        m_extremes->Reset();
        follow();
    }
    return ConfigNode::Start();
}

void recorderChannel::OnPropertyChanged(const PropertyDescriptor &descriptor)
{
    if (descriptor.valueId == Prop::Signal && GetState() == NodeState::Running) {
        m_extremes->Reset(); // another signal's numbers
        follow();
    }
    if (auto *display = dynamic_cast<widgetRecorderDigitalDisplay *>(GetParent()))
        display->ChannelChanged();
}

Result recorderChannel::ResetExtremes()
{
    const Result result = CheckAccess(PrivilegeCommand, *this);
    const ValueExtremes::State before = m_extremes->Get();
    if (result) {
        m_extremes->Reset();
        if (const BasicSignal *signal = GetSignal())
            m_extremes->Take(signal->GetValue());
    }
    StoreAct(*this, result,
             {"Сброс минимума и максимума",
              "Сброс минимума и максимума отклонён",
              before.minimum
                  ? FormatNumber(*before.minimum) + " .. " + FormatNumber(*before.maximum)
                  : std::string(),
              {}});
    return result;
}

} // namespace Nodes
