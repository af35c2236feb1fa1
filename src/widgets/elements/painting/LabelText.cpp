#include "widgets/elements/painting/LabelText.h"

#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/elements/painting/GlyphTable.h"

#include <QPainter>
#include <QStringList>

#include <cmath>

namespace Widgets {

LabelText::LabelText() = default;
LabelText::~LabelText() = default;

void LabelText::setFont(const QFont &font)
{
    if (m_font == font && m_glyphs)
        return;
    m_font = font;
    const bool isDecorated = font.underline() || font.strikeOut() || font.overline();
    m_glyphs = isDecorated ? nullptr : GlyphTable::forFont(font);
    m_isLaidOut = false;
}

void LabelText::draw(QPainter &painter, const Place &place, const QString &text)
{
    if (text.isEmpty())
        return;
    if (!m_isLaidOut || m_text != text || !(m_place == place))
        layOut(place, text);
    if (m_isGlyphs && place.angle == 0 && !m_isClipped) {
        painter.translate(place.centre);
        drawRuns(painter);
        painter.translate(-place.centre);
        return;
    }
    painter.save();
    painter.setFont(m_font);
    if (m_isGlyphs) {
        painter.translate(place.centre);
        painter.rotate(place.angle);
        if (m_isClipped)
            painter.setClipRect(m_rect, Qt::IntersectClip);
        drawRuns(painter);
    } else {
        // Turned by an odd angle the text's rectangle is larger than the element, and what is drawn
        // beyond would stay on the screen for ever.
        painter.setClipRect(QRect(QPoint(), place.box), Qt::IntersectClip);
        ElementPainting::drawRotatedText(painter, place.box, place.centre, place.angle,
                                         place.borderWidth, place.flags, text);
    }
    painter.restore();
}

void LabelText::layOut(const Place &place, const QString &text)
{
    m_text = text;
    m_place = place;
    m_rect = ElementPainting::rotatedTextRect(place.box, place.angle, place.borderWidth);
    m_runs.clear();
    m_isClipped = false;
    m_isLaidOut = true;
    const bool isWrapped = place.flags & (Qt::TextWordWrap | Qt::TextWrapAnywhere);
    // Between the quarter turns Qt draws shaped text finer than single glyphs.
    const bool isQuarter = std::fmod(place.angle, 90.0) == 0;
    m_isGlyphs =
        m_glyphs && !isWrapped && isQuarter && addLines(ElementPainting::withLineBreaks(text));
}

bool LabelText::addLines(const QString &text)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    const double step = m_glyphs->lineHeight() + m_glyphs->leading();
    const double height = lines.size() * step - m_glyphs->leading();
    double y = m_rect.top();
    if (m_place.flags & Qt::AlignBottom)
        y += m_rect.height() - height;
    else if (m_place.flags & Qt::AlignVCenter)
        y += (m_rect.height() - height) / 2;
    m_isClipped = height > m_rect.height();
    for (const QString &part : lines) {
        GlyphTable::Line line;
        const bool hasReturn = part.endsWith(QLatin1Char('\r'));
        if (!m_glyphs->append(hasReturn ? part.chopped(1) : part, line))
            return false;
        double x = m_rect.left();
        if (m_place.flags & Qt::AlignRight)
            x += m_rect.width() - line.width;
        else if (m_place.flags & Qt::AlignHCenter)
            x += (m_rect.width() - line.width) / 2;
        m_isClipped = m_isClipped || line.width > m_rect.width();
        const QPointF start(x, y + m_glyphs->ascent());
        for (QPointF &position : line.positions)
            position += start;
        QGlyphRun run;
        run.setRawFont(m_glyphs->rawFont());
        run.setGlyphIndexes(line.glyphs);
        run.setPositions(line.positions);
        m_runs.append(run);
        y += step;
    }
    return true;
}

void LabelText::drawRuns(QPainter &painter) const
{
    for (const QGlyphRun &run : m_runs)
        painter.drawGlyphRun(QPointF(), run);
}

} // namespace Widgets
