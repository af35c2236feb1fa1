#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/alarms/BannerFacts.h"

#include <QRect>
#include <QSize>

class QColor;
class QPainter;

namespace Widgets {

/// Draws an alarm banner and knows where its parts lie: sign and text at the left, counts and notes
/// in the middle, the button at the right.
class WIDGETS_EXPORT BannerPainter
{
public:
    BannerPainter(const BannerFacts &facts, const QSize &size, bool hasButton);

    enum Part { None, Text, Counts, Button };
    Part partAt(const QPoint &place) const;
    const QRect &button() const { return m_button; }
    /// What blinks.
    const QRect &sign() const { return m_sign; }

    /// On its background.
    void draw(QPainter &painter, bool isLit, bool isButtonDown) const;

private:
    int countsWidth() const;
    int notesWidth() const;
    void drawTrouble(QPainter &painter) const;
    void drawSign(QPainter &painter, bool isLit) const;
    void drawTexts(QPainter &painter, const QColor &ink) const;
    void drawCounts(QPainter &painter) const;
    void drawNotes(QPainter &painter) const;
    void drawButton(QPainter &painter, bool isDown) const;

    const BannerFacts &m_facts;
    QRect m_area;
    QRect m_sign;
    QRect m_text;
    QRect m_counts;
    QRect m_button;
};

} // namespace Widgets
