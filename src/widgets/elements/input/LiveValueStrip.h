#pragma once

#include "nodes/values/Quality.h"

#include <QFont>
#include <QMargins>
#include <QRect>
#include <QString>

class QPainter;

namespace Widgets {

/// The live value that an edit box goes on showing while the operator types: beside the typing
/// where the box is wide enough, else above it, both smaller. Never outside the box.
struct LiveValueStrip
{
    /// What the box has to offer, in its own coordinates.
    struct Room
    {
        QRect inner; ///< free of border and buttons
        QFont font;  ///< of the typing
        Qt::Alignment alignment;
        QString widest; ///< typing that has to fit
    };

    QRect place;        ///< of the live value
    QMargins margins;   ///< in the room, that the typing keeps clear
    int typingSize = 0; ///< pixels of the typing's font

    static LiveValueStrip of(const Room &room, const QString &live);
    void draw(QPainter &painter, const QString &live, Nodes::Quality quality) const;
};

} // namespace Widgets
