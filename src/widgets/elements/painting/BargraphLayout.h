#pragma once

#include "widgets/elements/painting/ScaleTicks.h"

#include <QRectF>

namespace Widgets {

struct BargraphLook;

/// Where the parts of one bargraph stand, all of them within its box. What there is no room for is
/// left out, one part after the other, until the bar is wide and long enough to be read: first the
/// strip of the marks beside the bar, then numbers, ticks, zones, the value's text and the room for
/// the arrows at the ends. Depths are pixels across the scale, from the numbers' side.
class BargraphLayout
{
public:
    explicit BargraphLayout(const BargraphLook &look);

    bool hasMarks() const { return m_parts.marks; } ///< else they stand on the bar
    bool hasNumbers() const { return m_parts.numbers; }
    bool hasTicks() const { return m_parts.ticks; }
    bool hasZones() const { return m_parts.zones; }
    bool hasText() const { return m_parts.text; }
    bool hasEnds() const { return m_parts.ends; } ///< else arrows stand on the bar

    const ScaleTicks &ticks() const { return m_ticks; }
    const QRectF &axis() const { return m_axis; } ///< scale and bar, without the ends
    const QRectF &textRow() const { return m_textRow; }
    double tickDepth() const { return m_tickDepth; } ///< of the ticks' begin, behind the numbers
    double zoneDepth() const { return m_zoneDepth; }
    double zoneWidth() const { return m_zoneWidth; }
    double barDepth() const { return m_barDepth; }
    double markDepth() const { return m_markDepth; } ///< end of the bar

    static constexpr double ArrowLength = 11; ///< pixels, all of these
    static constexpr double MarkWidth = 12;
    static constexpr double Gap = 3;
    static constexpr int SmallestText = 7;

private:
    struct Parts
    {
        bool marks = true;
        bool numbers = true;
        bool ticks = true;
        bool zones = true;
        bool text = true;
        bool ends = true;
    };

    void place();
    void placeText();
    void placeTicks(double length);
    double numberExtent(bool isAlong) const;
    double shortage() const;

    const BargraphLook &m_look;
    Parts m_parts;
    ScaleTicks m_ticks;
    QRectF m_axis;
    QRectF m_textRow;
    double m_numberWidth = 0; ///< of the widest
    double m_tickDepth = 0;
    double m_zoneDepth = 0;
    double m_zoneWidth = 0;
    double m_barDepth = 0;
    double m_markDepth = 0;
};

} // namespace Widgets
