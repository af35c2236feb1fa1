#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/elements/BasicTextWidget.h"

namespace Nodes {

class recorderChannel;

/// A board of numbers for reading from afar: one line for each of its recorderChannel children.
class NODES_EXPORT widgetRecorderDigitalDisplay : public BasicTextWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15005);
    struct Prop : BasicTextWidget::Prop
    {
        static constexpr PropertyId<bool> Extremes{12280, "extremes"};
    };

    widgetRecorderDigitalDisplay();
    ~widgetRecorderDigitalDisplay() override;
    static KindInfo Kind();

    std::vector<recorderChannel *> GetChannels() const;
    /// Whether lines show the extremes and the button that resets them.
    bool GetShowExtremes() const { return m_showsExtremes; }
    /// To be told by a channel whose configuration changed. GUI thread.
    void ChannelChanged();

protected:
    Result OnFirstStart() override;
    Result OnLastStop() override;

private:
    void followChannels();

    bool m_showsExtremes = true;
    std::vector<std::unique_ptr<ValueSubscription>> m_channelValues; // only while started
};

} // namespace Nodes
