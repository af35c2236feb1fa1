#pragma once

#include "nodes/values/Quality.h"
#include "nodes/visual/AlarmMark.h"

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>

#include <cmath>
#include <optional>

namespace Widgets {

/// Everything a bargraph shows at one moment.
struct BargraphLook
{
    QRect box; ///< inside the frame
    bool isVertical = true;
    double minimum = 0;
    double maximum = 0;
    double value = 0; ///< NaN and bad quality draw no bar
    Nodes::Quality quality = Nodes::Quality::Bad;
    Nodes::LimitZones zones;
    Nodes::AlarmMark mark;
    std::optional<double> setPoint;
    bool isSetPointGood = true;
    QString text; ///< of the value; "" for no room reserved
    bool hasScale = true;
    QFont font;
    QColor textColor;
    QColor barColor;

    bool isStandIn = false; ///< there is no value: its bar is but an outline in the middle

    bool hasRange() const { return minimum < maximum; }
    bool hasBar() const
    {
        return quality != Nodes::Quality::Bad && !std::isnan(value) && hasRange();
    }
    /// -1 below the scale, 1 above it.
    static int overflow(double number, double minimum, double maximum)
    {
        return number < minimum ? -1 : number > maximum ? 1 : 0;
    }
};

} // namespace Widgets
