#pragma once

class QColor;
class QImage;

namespace Editor {

/// How colours are told apart by whoever looks at them. Any thread.
class ReviewColors
{
public:
    static constexpr double LeastContrast = 4.5;

    /// Ratio of the relative luminances, 1 to 21, as accessibility guidelines define it. Alpha does
    /// not count.
    static double contrast(const QColor &one, const QColor &other);
    /// Saturated and of the hue of an alarm's priority 1 to 3: what an operator takes for an alarm.
    static bool isAlarm(const QColor &color);
    /// The pictures are equal where colours are not seen: of one outline and brightness.
    static bool differByHueOnly(const QImage &one, const QImage &other);
};

} // namespace Editor
