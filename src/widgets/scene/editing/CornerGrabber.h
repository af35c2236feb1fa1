#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/Corner.h"

#include <QColor>
#include <QGraphicsItem>
#include <QPen>

namespace Widgets {

/// One of the eight handles of a selected element: a child item of its host, which filters the
/// grabber's events and does what they mean. GUI thread.
class WIDGETS_EXPORT CornerGrabber : public QGraphicsItem
{
public:
    enum { Type = UserType + 1 };
    enum MouseState : int { Idle = 0, Pressed = 1, Dragging = 2 };

    static constexpr double side = 6; ///< pixels

    CornerGrabber(QGraphicsItem *parent, Corner corner);

    int type() const override { return Type; }
    Corner corner() const { return m_corner; }

    MouseState mouseState() const { return m_state; }
    void setMouseState(MouseState state) { m_state = state; }
    /// Where it was pressed, scene pixels.
    QPointF pressPosition() const { return m_press; }
    void setPressPosition(QPointF place) { m_press = place; }
    /// Black, red below the pointer.
    QColor color() const { return m_pen.color(); }

    QRectF boundingRect() const override;
    /// Without the inside of an owner so small on the screen that grabbers cover it: there it is
    /// moved.
    QPainterPath shape() const override;
    /// Its outline alone: the ground below it is laid by GrabberPlane.
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

protected:
    void hoverEnterEvent(QGraphicsSceneHoverEvent *event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent *event) override;
    // Accepted, for the button to stay with it; its host filters them.
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;

private:
    void setColor(const QColor &color);

    Corner m_corner;
    MouseState m_state = Idle;
    QPointF m_press;
    QPen m_pen{Qt::black, 1, Qt::SolidLine, Qt::SquareCap};
};

} // namespace Widgets
