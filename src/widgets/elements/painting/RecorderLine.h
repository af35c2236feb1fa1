#pragma once

#include "nodes/values/Quality.h"
#include "nodes/visual/AlarmMark.h"

#include <QRect>
#include <QString>

class QColor;
class QFont;
class QPainter;

namespace Nodes {
class recorderChannel;
}

namespace Widgets {

/// One line of the recorder display as it is at one moment: texts, state, and how it is drawn.
struct RecorderLine
{
    QString name;
    QString value; ///< dashes for a bad one, words for one the user may not view
    QString unit;
    QString extremes; ///< "" when not shown
    Nodes::Quality quality = Nodes::Quality::Bad;
    Nodes::AlarmMark mark;

    /// Where it is edited, the form of a number stands in place of a value that is not good.
    static RecorderLine of(const Nodes::recorderChannel &channel, bool hasExtremes, bool isEdited);
    /// Place of the button that resets the extremes: large enough for a finger where the line is.
    static QRect resetButton(const QRect &line);
    /// Sizes follow the line's height; `font` gives the family, and the smallest size of texts.
    void draw(QPainter &painter, const QRect &line, const QFont &font, const QColor &color,
              bool isPressed) const;

private:
    void drawState(QPainter &painter, const QRect &line) const;
    void drawTexts(QPainter &painter, const QRect &line, const QFont &font) const;
    void drawValue(QPainter &painter, const QRect &line, const QFont &font) const;
    static void drawReset(QPainter &painter, const QRect &line, const QFont &font, bool isPressed);
};

} // namespace Widgets
