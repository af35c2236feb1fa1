#include "widgets/elements/input/LiveValueStrip.h"

#include "widgets/elements/painting/ElementPainting.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QPainter>

namespace Widgets {

namespace {

constexpr int caret = 10;    // pixels that the typing needs beside its text
constexpr int padding = 4;   // on both sides of the live value
constexpr int signRoom = 14; // for the mark of a value that is not good
constexpr int smallest = 8;  // pixels of a font
const QColor ground(0xe3, 0xe7, 0xea);
const QColor edge(0x8a, 0x94, 0x9b);
const QColor ink(0x20, 0x26, 0x2c);

QFont sized(int pixels, bool isItalic = false)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(qMax(smallest, pixels));
    font.setItalic(isItalic);
    font.setBold(false); // else the painter takes it from the box
    return font;
}

int widthOf(const QFont &font, const QString &text)
{
    return QFontMetrics(font).horizontalAdvance(text);
}

QString captioned(const QString &live)
{
    return QStringLiteral("сейчас ") + live;
}

LiveValueStrip beside(const LiveValueStrip::Room &room, int width)
{
    LiveValueStrip strip;
    const bool isRight = room.alignment & Qt::AlignLeft;
    strip.place = QRect(room.inner.left(), room.inner.top(), width, room.inner.height());
    if (isRight)
        strip.place.moveRight(room.inner.right());
    strip.margins = isRight ? QMargins(0, 0, width, 0) : QMargins(width, 0, 0, 0);
    strip.typingSize = QFontInfo(room.font).pixelSize();
    return strip;
}

LiveValueStrip above(const LiveValueStrip::Room &room)
{
    LiveValueStrip strip;
    const int height = qBound(9, int(room.inner.height() * 0.42), 18);
    strip.place = QRect(room.inner.topLeft(), QSize(room.inner.width(), height));
    strip.margins = QMargins(0, height, 0, 0);
    strip.typingSize = qBound(smallest, int((room.inner.height() - height) * 0.78),
                              QFontInfo(room.font).pixelSize());
    return strip;
}

} // namespace

LiveValueStrip LiveValueStrip::of(const Room &room, const QString &live)
{
    const QFont font = sized(qBound(11, int(room.inner.height() * 0.36), 15));
    const int width =
        qMax(widthOf(font, live), widthOf(font, QStringLiteral("сейчас"))) + 2 * padding + signRoom;
    const int typing = widthOf(room.font, room.widest) + caret;
    return width + typing <= room.inner.width() ? beside(room, width) : above(room);
}

void LiveValueStrip::draw(QPainter &painter, const QString &live, Nodes::Quality quality) const
{
    painter.fillRect(place, ground);
    painter.setPen(edge);
    const bool isAbove = margins.top() > 0;
    if (isAbove)
        painter.drawLine(place.bottomLeft(), place.bottomRight());
    else if (margins.left() > 0)
        painter.drawLine(place.topRight(), place.bottomRight());
    else
        painter.drawLine(place.topLeft(), place.bottomLeft());
    const bool isStacked = !isAbove && place.height() >= 30;
    const QRect text = place.adjusted(padding, 0, -padding - signRoom, 0);
    int pixels = isAbove ? place.height() - 1 : qBound(11, int(place.height() * 0.36), 15);
    const bool isStale = quality == Nodes::Quality::Stale;
    // A number is made smaller rather than cut.
    while (pixels > smallest && widthOf(sized(pixels, isStale), live) > text.width())
        --pixels;
    const QFont font = sized(pixels, isStale);
    const bool fits = widthOf(font, captioned(live)) <= text.width();
    painter.setFont(font);
    painter.setPen(ink);
    if (isStacked)
        painter.drawText(text, Qt::AlignCenter, QStringLiteral("сейчас\n") + live);
    else
        painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         fits ? captioned(live)
                              : QFontMetrics(font).elidedText(live, Qt::ElideRight, text.width()));
    ElementPainting::drawQualityMark(painter, place, quality, Qt::AlignLeft);
}

} // namespace Widgets
