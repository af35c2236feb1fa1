#pragma once

#include "widgets/WidgetsExport.h"

#include <QFont>
#include <QGlyphRun>
#include <QPoint>
#include <QRect>
#include <QString>

#include <memory>

class QPainter;

namespace Widgets {

class GlyphTable;

/// Text of one label with its layout kept between paintings. Looks exactly like
/// ElementPainting::drawRotatedText, in a fraction of the time. GUI thread.
class WIDGETS_EXPORT LabelText
{
public:
    /// How the text stands in its element; what a layout depends on beside text and font.
    struct Place
    {
        QSize box;
        QPoint centre;    ///< that the text is turned about
        double angle = 0; ///< degrees, clockwise
        int borderWidth = 0;
        int flags = 0; ///< Qt::Alignment and Qt::TextFlag
        bool operator==(const Place &o) const
        {
            return box == o.box && centre == o.centre && angle == o.angle &&
                   borderWidth == o.borderWidth && flags == o.flags;
        }
    };

    LabelText();
    ~LabelText();

    void setFont(const QFont &font);
    /// Draws with the painter's pen; leaves the painter's font, clip and transformation alone.
    void draw(QPainter &painter, const Place &place, const QString &text);

private:
    void layOut(const Place &place, const QString &text);
    bool addLines(const QString &text);
    void drawRuns(QPainter &painter) const;

    QFont m_font;
    std::shared_ptr<GlyphTable> m_glyphs; ///< null for fonts with lines under or through the text
    QString m_text;
    Place m_place;
    QRect m_rect;              ///< of the text, in turned coordinates
    QVector<QGlyphRun> m_runs; ///< one a line, positions in turned coordinates
    bool m_isLaidOut = false;  ///< for m_text and m_place
    bool m_isGlyphs = false;   ///< m_runs say it all; else the text is shaped at each painting
    bool m_isClipped = false;  ///< the text is larger than its rectangle
};

} // namespace Widgets
