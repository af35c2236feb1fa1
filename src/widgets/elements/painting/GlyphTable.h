#pragma once

#include "widgets/WidgetsExport.h"

#include <QFont>
#include <QHash>
#include <QPointF>
#include <QRawFont>
#include <QString>
#include <QVector>

#include <memory>

namespace Widgets {

/// Glyphs of one font, shaped once and reused: digits and signs one by one, so that a changing
/// number is laid out without the text shaper, everything else word by word. Shared by all texts
/// of that font. GUI thread.
class WIDGETS_EXPORT GlyphTable
{
public:
    /// Where the glyphs of one line stand, from the start of its baseline.
    struct Line
    {
        QVector<quint32> glyphs;
        QVector<QPointF> positions;
        double width = 0;
    };

    static std::shared_ptr<GlyphTable> forFont(const QFont &font);
    explicit GlyphTable(const QFont &font);

    /// Appends the text to the line. False for texts that need another font, line breaking or
    /// writing from right to left; they are left to the text shaper.
    bool append(const QString &text, Line &line);

    const QRawFont &rawFont() const { return m_rawFont; }
    double ascent() const { return m_ascent; }
    double lineHeight() const { return m_lineHeight; }
    double leading() const { return m_leading; }

private:
    struct Word
    {
        QVector<quint32> glyphs;
        QVector<QPointF> positions;
        double width = 0;
        bool isUsable = false;
    };

    static bool isSingle(QChar c);
    static bool isSimpleScript(QChar c);
    const Word &word(const QString &text);
    Word shape(const QString &text) const;
    static void append(const Word &word, Line &line);

    QFont m_font;
    QRawFont m_rawFont;
    double m_ascent;
    double m_lineHeight;
    double m_leading;
    QHash<QString, Word> m_words;
};

} // namespace Widgets
