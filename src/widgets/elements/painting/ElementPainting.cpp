#include "widgets/elements/painting/ElementPainting.h"

#include <QPainter>
#include <QtMath>

namespace Widgets {

namespace {

const QColor plateColor(255, 255, 255, 230);
const QColor signColor(96, 0, 80); // dark magenta: stands for data, red and yellow are for alarms
const QColor hatchColor(96, 0, 80, 110);

class SavedPainter
{
public:
    explicit SavedPainter(QPainter &painter) : m_painter(painter) { m_painter.save(); }
    ~SavedPainter() { m_painter.restore(); }
    SavedPainter(const SavedPainter &) = delete;
    SavedPainter &operator=(const SavedPainter &) = delete;

private:
    QPainter &m_painter;
};

QRect signRect(const QRect &rect, Qt::Alignment alignment)
{
    const int side = qMin(rect.height() >= 28 ? 13 : 11, qMin(rect.width(), rect.height()));
    const bool isLeft = alignment & Qt::AlignRight;
    return QRect(isLeft ? rect.left() : rect.right() + 1 - side, rect.top(), side, side);
}

void drawCross(QPainter &painter, const QRectF &sign)
{
    const QRectF inner = sign.adjusted(2.5, 2.5, -2.5, -2.5);
    painter.drawLine(inner.topLeft(), inner.bottomRight());
    painter.drawLine(inner.topRight(), inner.bottomLeft());
}

void drawClock(QPainter &painter, const QRectF &sign)
{
    const QPointF centre = sign.center();
    painter.drawEllipse(sign.adjusted(1, 1, -1, -1));
    painter.drawLine(centre, centre + QPointF(0, -sign.height() * 0.28));
    painter.drawLine(centre, centre + QPointF(sign.width() * 0.22, 0));
}

void drawQuestion(QPainter &painter, const QRectF &sign)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(qMax(1, int(sign.height()) - 1));
    font.setBold(true);
    painter.setFont(font);
    painter.drawText(sign, Qt::AlignCenter | Qt::TextDontClip, QStringLiteral("?"));
}

// Qt's own dashes begin elsewhere in each part that is painted anew.
void drawDashes(QPainter &painter, const QRect &rect)
{
    constexpr int dash = 4; // pixels
    constexpr int period = 6;
    for (int x = rect.left(); x <= rect.right(); x += period) {
        const int length = qMin(dash, rect.right() + 1 - x);
        painter.fillRect(x, rect.top(), length, 1, signColor);
        painter.fillRect(x, rect.bottom(), length, 1, signColor);
    }
    for (int y = rect.top(); y <= rect.bottom(); y += period) {
        const int length = qMin(dash, rect.bottom() + 1 - y);
        painter.fillRect(rect.left(), y, 1, length, signColor);
        painter.fillRect(rect.right(), y, 1, length, signColor);
    }
}

void drawArea(QPainter &painter, const QRect &rect, Nodes::Quality quality)
{
    if (quality == Nodes::Quality::Bad) {
        // Smoothed, a hatch in a scaled view looks different in each part that is painted anew.
        painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
        painter.fillRect(rect, QBrush(hatchColor, Qt::BDiagPattern));
    } else if (quality == Nodes::Quality::Stale) {
        drawDashes(painter, rect);
    }
}

} // namespace

void ElementPainting::drawBorder(QPainter &painter, const QSize &box, int width,
                                 const QColor &color)
{
    if (width <= 0)
        return;
    const QPen pen = painter.pen();
    const QBrush brush = painter.brush();
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(width / 2.0, width / 2.0, box.width() - width, box.height() - width));
    painter.setPen(pen);
    painter.setBrush(brush);
}

QRect ElementPainting::rotatedTextRect(const QSize &box, double angle, int borderWidth)
{
    const double radians = angle * M_PI / 180;
    const double cosine = std::abs(std::cos(radians));
    const double sine = std::abs(std::sin(radians));
    // A quarter turn must not lose a pixel to a cosine of 6e-17.
    const auto whole = [](double length) { return static_cast<int>(length + 1e-9); };
    const int width = whole(box.width() * cosine + box.height() * sine);
    const int height = whole(box.width() * sine + box.height() * cosine);
    return QRect(2 * borderWidth - width / 2, 2 * borderWidth - height / 2, width - 4 * borderWidth,
                 height - 4 * borderWidth);
}

QString ElementPainting::withLineBreaks(const QString &text)
{
    if (!text.contains(QLatin1Char('\\')))
        return text;
    return QString(text).replace(QLatin1String("\\n"), QLatin1String("\r\n"));
}

void ElementPainting::drawRotatedText(QPainter &painter, const QSize &box, const QPoint &centre,
                                      double angle, int borderWidth, int flags, const QString &text)
{
    const SavedPainter saved(painter);
    painter.setRenderHints(QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    painter.translate(centre);
    painter.rotate(angle);
    painter.drawText(rotatedTextRect(box, angle, borderWidth), flags, withLineBreaks(text));
}

void ElementPainting::drawDisabledCover(QPainter &painter, const QRect &rect)
{
    painter.fillRect(rect, QColor(128, 128, 128, 128));
}

void ElementPainting::drawQualityMark(QPainter &painter, const QRect &rect, Nodes::Quality quality,
                                      Qt::Alignment alignment)
{
    if (quality == Nodes::Quality::Good || rect.isEmpty())
        return;
    const SavedPainter saved(painter);
    drawArea(painter, rect, quality);
    const QRect plate = signRect(rect, alignment);
    painter.fillRect(plate, plateColor);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF sign = QRectF(plate).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(QPen(signColor, 1.5, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    if (quality == Nodes::Quality::Bad)
        drawCross(painter, sign);
    else if (quality == Nodes::Quality::Stale)
        drawClock(painter, sign);
    else
        drawQuestion(painter, sign);
}

} // namespace Widgets
