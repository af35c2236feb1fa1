#include "widgets/elements/painting/GlyphTable.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QTextLayout>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int mostWords = 1000; // units and captions are few; the bound is for texts that are data

using Tables = QHash<QFont, std::weak_ptr<GlyphTable>>;

} // namespace

std::shared_ptr<GlyphTable> GlyphTable::forFont(const QFont &font)
{
    static Tables tables;
    std::weak_ptr<GlyphTable> &held = tables[font];
    std::shared_ptr<GlyphTable> table = held.lock();
    if (!table) {
        table = std::make_shared<GlyphTable>(font);
        held = table;
    }
    return table;
}

GlyphTable::GlyphTable(const QFont &font) : m_font(font), m_rawFont(QRawFont::fromFont(font))
{
    const QFontMetricsF metrics(font);
    m_ascent = metrics.ascent();
    m_lineHeight = metrics.height();
    m_leading = metrics.leading();
}

bool GlyphTable::isSingle(QChar c)
{
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('.') ||
           c == QLatin1Char(',') || c == QLatin1Char('-') || c == QLatin1Char('+') ||
           c == QLatin1Char(' ') || c == QLatin1Char(':');
}

bool GlyphTable::isSimpleScript(QChar c)
{
    const ushort code = c.unicode();
    const bool isLetter = code >= 0x20 && code < 0x0590; // Latin, Greek, Cyrillic, Armenian
    const bool isSymbol = code >= 0x2010 && code < 0x2c00 && !(code >= 0x2028 && code <= 0x202f);
    return isLetter || isSymbol;
}

bool GlyphTable::append(const QString &text, Line &line)
{
    int start = 0;
    while (start < text.size()) {
        int end = start + 1;
        if (!isSingle(text[start])) {
            while (end < text.size() && !isSingle(text[end]))
                ++end;
        }
        const Word &part = word(text.mid(start, end - start));
        if (!part.isUsable)
            return false;
        append(part, line);
        start = end;
    }
    return true;
}

void GlyphTable::append(const Word &word, Line &line)
{
    line.glyphs += word.glyphs;
    for (const QPointF &position : word.positions)
        line.positions.append(QPointF(position.x() + line.width, position.y()));
    line.width += word.width;
}

const GlyphTable::Word &GlyphTable::word(const QString &text)
{
    const auto found = m_words.constFind(text);
    if (found != m_words.constEnd())
        return *found;
    if (m_words.size() >= mostWords)
        m_words.clear();
    return *m_words.insert(text, shape(text));
}

GlyphTable::Word GlyphTable::shape(const QString &text) const
{
    Word word;
    if (!std::all_of(text.begin(), text.end(), &GlyphTable::isSimpleScript))
        return word;
    QTextLayout layout(text, m_font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    word.width = line.horizontalAdvance();
    if (text == QLatin1String(" ")) {
        word.width = QFontMetricsF(m_font).horizontalAdvance(text);
        word.isUsable = true;
    } else if (runs.size() == 1 && runs.first().rawFont() == m_rawFont) {
        word.glyphs = runs.first().glyphIndexes();
        word.positions = runs.first().positions();
        for (QPointF &position : word.positions)
            position.ry() -= line.ascent();
        word.isUsable = true;
    }
    return word;
}

} // namespace Widgets
