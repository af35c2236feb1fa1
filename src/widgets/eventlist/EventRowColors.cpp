#include "widgets/eventlist/EventRowColors.h"

#include "nodes/events/EventColorProperties.h"
#include "nodes/model/BasicNode.h"
#include "utils/convert/ValueConversions.h"

#include <algorithm>

namespace Widgets {

EventRowColors EventRowColors::of(const Nodes::BasicNode *source)
{
    if (!source)
        return {};
    const Nodes::EventColors &colors = Nodes::EventColorProperties::Of(*source);
    return of(Utils::NColorToQColor(colors.background), Utils::NColorToQColor(colors.text));
}

EventRowColors EventRowColors::of(const QColor &background, const QColor &text)
{
    return {background, background == text ? readableOn(background) : text};
}

QColor EventRowColors::readableOn(const QColor &background)
{
    constexpr int quarter = 64;
    constexpr int half = 128;
    constexpr int mostly = 192;
    constexpr int whole = 256;
    int hue = std::max(background.hsvHue(), 0); // -1 for greys
    const int saturation = background.hsvSaturation();
    int value = background.value();
    if (hue > 60 && hue < 210 && saturation >= quarter)
        value -= half;
    hue -= 120;
    if (hue < 0)
        hue += 360;
    if (background.value() == 0) {
        value = 255;
    } else if (saturation < quarter) {
        value += value < quarter ? mostly : value < 193 ? -half : -mostly;
        value += value < 0 ? whole : 0;
    } else if (value != 0) {
        value += value < quarter ? mostly : value < half ? half : value < mostly ? quarter : 0;
        value += value < 0 ? whole : 0;
    } else {
        value = 255;
    }
    return QColor::fromHsv(hue, saturation, std::min(value, 255));
}

} // namespace Widgets
