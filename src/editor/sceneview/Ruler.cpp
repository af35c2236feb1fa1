#include "editor/sceneview/Ruler.h"

#include "editor/sceneview/RulerTicks.h"

#include <QPainter>

namespace Editor {

namespace {

const QColor paperColor(0xf4, 0xf6, 0xf7);
const QColor inkColor(0x46, 0x50, 0x58);
const QColor edgeColor(0xb8, 0xc0, 0xc6);
const QColor extentColor(0x9c, 0xc3, 0xe8);
const QColor pointerColor(0xc8, 0x00, 0x78);

constexpr int majorLength = 10;
constexpr int minorLength = 4;

} // namespace

Ruler::Ruler(Qt::Orientation orientation, QWidget *parent)
    : QWidget(parent), m_orientation(orientation)
{
    if (isHorizontal())
        setFixedHeight(Thickness);
    else
        setFixedWidth(Thickness);
    QFont small = font();
    small.setPixelSize(10);
    setFont(small);
}

QSize Ruler::sizeHint() const
{
    return isHorizontal() ? QSize(100, Thickness) : QSize(Thickness, 100);
}

void Ruler::setScale(double origin, double scale)
{
    m_origin = origin;
    m_scale = scale;
    update();
}

void Ruler::setPointer(double at)
{
    m_pointer = at;
    update();
}

void Ruler::clearPointer()
{
    m_pointer.reset();
    update();
}

void Ruler::setExtent(double begin, double end)
{
    m_extent = Extent{begin, end};
    update();
}

void Ruler::clearExtent()
{
    m_extent.reset();
    update();
}

void Ruler::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), paperColor);
    paintExtent(painter);
    paintTicks(painter);
    painter.setPen(edgeColor);
    painter.drawLine(isHorizontal() ? QLine(0, height() - 1, width(), height() - 1)
                                    : QLine(width() - 1, 0, width() - 1, height()));
    if (!m_pointer)
        return;
    painter.setPen(pointerColor);
    const int at = qRound(pixelOf(*m_pointer));
    painter.drawLine(isHorizontal() ? QLine(at, 0, at, height()) : QLine(0, at, width(), at));
}

void Ruler::paintExtent(QPainter &painter) const
{
    if (!m_extent)
        return;
    const int begin = qRound(pixelOf(m_extent->begin));
    const int length = qMax(1, qRound(pixelOf(m_extent->end)) - begin);
    painter.fillRect(isHorizontal() ? QRect(begin, 0, length, height())
                                    : QRect(0, begin, width(), length),
                     extentColor);
}

void Ruler::paintTicks(QPainter &painter) const
{
    painter.setPen(inkColor);
    for (const RulerTick &tick :
         RulerTicks(m_origin, m_scale, isHorizontal() ? width() : height())) {
        const int length = tick.isMajor ? majorLength : minorLength;
        const int at = qRound(tick.at);
        painter.drawLine(isHorizontal() ? QLine(at, height() - length, at, height())
                                        : QLine(width() - length, at, width(), at));
        if (tick.isMajor)
            paintValue(painter, tick.at, tick.value);
    }
}

// Beside its mark; on an upright ruler it is read from below.
void Ruler::paintValue(QPainter &painter, double at, int value) const
{
    painter.save();
    if (isHorizontal()) {
        painter.translate(at + 3, 0);
    } else {
        painter.translate(0, at - 3);
        painter.rotate(-90);
    }
    painter.drawText(QRect(0, 0, 60, Thickness - minorLength - 4), Qt::AlignLeft | Qt::AlignVCenter,
                     QString::number(value));
    painter.restore();
}

} // namespace Editor
