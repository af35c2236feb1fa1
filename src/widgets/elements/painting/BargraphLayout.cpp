#include "widgets/elements/painting/BargraphLayout.h"

#include "widgets/elements/painting/BargraphLook.h"
#include "widgets/elements/painting/TabularText.h"

#include <QFontInfo>
#include <QFontMetricsF>

namespace Widgets {

namespace {

constexpr double majorTick = 7;         // pixels, all of these
constexpr double thinnestBar = 9;       // across
constexpr double shortestBar = 24;      // along
constexpr double smallestDivision = 44; // between numbers
constexpr double narrowBox = 28;        // across: zones are drawn thinner

} // namespace

BargraphLayout::BargraphLayout(const BargraphLook &look) : m_look(look)
{
    m_parts.numbers = m_parts.ticks = look.hasScale;
    m_parts.text = !look.text.isEmpty();
    place();
    for (bool Parts::*part : {&Parts::marks, &Parts::numbers, &Parts::ticks, &Parts::zones,
                              &Parts::text, &Parts::ends}) {
        const double before = shortage();
        if (before <= 0)
            break;
        if (!(m_parts.*part))
            continue;
        m_parts.*part = false;
        place();
        // What gains nothing stays.
        if (shortage() < before)
            continue;
        m_parts.*part = true;
        place();
    }
}

// Along the scale or across it.
double BargraphLayout::numberExtent(bool isAlong) const
{
    return isAlong == m_look.isVertical ? QFontMetricsF(m_look.font).height() : m_numberWidth;
}

void BargraphLayout::placeText()
{
    m_textRow = m_look.box;
    m_textRow.setHeight(QFontMetricsF(m_look.font).height() + 2 * Gap);
    if (m_look.isVertical)
        m_textRow.moveBottom(m_axis.bottom());
    const double width = TabularText::width(m_look.font, m_look.text);
    const double pixels = QFontInfo(m_look.font).pixelSize();
    if (m_parts.text && pixels * m_textRow.width() < SmallestText * width)
        m_parts.text = false;
    if (!m_parts.text)
        return;
    if (m_look.isVertical)
        m_axis.setBottom(m_textRow.top());
    else
        m_axis.setTop(m_textRow.bottom());
}

// As many numbers as stand clear of each other.
void BargraphLayout::placeTicks(double length)
{
    double division = smallestDivision;
    for (int tries = 0; tries < 3; ++tries) {
        m_ticks = ScaleTicks::make(m_look.minimum, m_look.maximum, int(length / division));
        m_numberWidth = 0;
        for (const double tick : qAsConst(m_ticks.major))
            m_numberWidth =
                qMax(m_numberWidth,
                     TabularText::width(m_look.font, QString::number(tick, 'f', m_ticks.decimals)));
        const double needed = numberExtent(true) + 2 * Gap;
        if (needed <= division)
            break;
        division = needed;
    }
}

void BargraphLayout::place()
{
    m_axis = m_look.box;
    placeText();
    placeTicks(m_look.isVertical ? m_axis.height() : m_axis.width());
    double end = m_parts.ends ? ArrowLength + 2 : 1;
    m_tickDepth = 0;
    if (m_parts.numbers) {
        end = qMax(end, numberExtent(true) / 2);
        m_tickDepth = numberExtent(false) + Gap;
    }
    m_zoneDepth = m_tickDepth + (m_parts.ticks ? majorTick : 0);
    if (m_look.isVertical)
        m_axis.adjust(0, end, 0, -end);
    else
        m_axis.adjust(end, 0, -end, 0);
    const bool isNarrow =
        (m_look.isVertical ? m_look.box.width() : m_look.box.height()) < narrowBox;
    m_zoneWidth = isNarrow ? 4 : 7;
    m_barDepth = m_zoneDepth + (m_parts.zones ? m_zoneWidth + (isNarrow ? 1 : Gap) : 0);
    m_markDepth =
        (m_look.isVertical ? m_axis.width() : m_axis.height()) - (m_parts.marks ? MarkWidth : 0);
}

double BargraphLayout::shortage() const
{
    const double length = m_look.isVertical ? m_axis.height() : m_axis.width();
    double missing =
        qMax(0.0, thinnestBar - (m_markDepth - m_barDepth)) + qMax(0.0, shortestBar - length);
    if (m_parts.numbers && m_ticks.major.size() > 1) {
        const double step = (m_ticks.major[1] - m_ticks.major[0]) /
                            (m_look.maximum - m_look.minimum) * qMax(0.0, length);
        missing += qMax(0.0, numberExtent(true) + Gap - step);
    }
    return missing;
}

} // namespace Widgets
