#include "nodes/visual/elements/widgetRecorderDigitalDisplay.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/visual/elements/recorderChannel.h"

namespace Nodes {

widgetRecorderDigitalDisplay::widgetRecorderDigitalDisplay()
    : BasicTextWidget(NColor(250, 251, 252), 1, AlignmentLeft)
{
}

widgetRecorderDigitalDisplay::~widgetRecorderDigitalDisplay() = default;

KindInfo widgetRecorderDigitalDisplay::Kind()
{
    return KindBuilder::For<widgetRecorderDigitalDisplay>("recorderDisplay", "Recorder display",
                                                          "Цифровое табло")
        .Inherit<BasicTextWidget>()
        .Property<&widgetRecorderDigitalDisplay::m_showsExtremes>(Prop::Extremes, "Show extremes",
                                                                  "Показывать минимум и максимум")
        .Children({NodeType(recorderChannel::Code)});
}

std::vector<recorderChannel *> widgetRecorderDigitalDisplay::GetChannels() const
{
    std::vector<recorderChannel *> channels;
    for (const auto &child : Children()) {
        if (auto *channel = dynamic_cast<recorderChannel *>(child.get()))
            channels.push_back(channel);
    }
    return channels;
}

Result widgetRecorderDigitalDisplay::OnFirstStart()
{
    const Result started = BasicTextWidget::OnFirstStart();
    followChannels();
    return started;
}

void widgetRecorderDigitalDisplay::followChannels()
{
    m_channelValues.clear();
    for (recorderChannel *channel : GetChannels()) {
        (void)channel->Start(); // a channel without a signal shows as such
        const BasicSignal *signal = channel->GetSignal();
        if (!signal)
            continue;
        m_channelValues.push_back(std::make_unique<ValueSubscription>());
        // Something changed; what of it may be viewed, the channels tell.
        m_channelValues.back()->Connect(
            signal->GetCell(), [this](const SignalValue &) { NotifyValueChanged(SignalValue()); });
    }
}

void widgetRecorderDigitalDisplay::ChannelChanged()
{
    if (GetState() == NodeState::Running)
        followChannels();
    NotifyValueChanged(SignalValue());
}

Result widgetRecorderDigitalDisplay::OnLastStop()
{
    m_channelValues.clear();
    return BasicTextWidget::OnLastStop();
}

} // namespace Nodes
