#pragma once

#include <QGraphicsObject>

namespace Widgets {

/// Lies over the live elements of an instance that is disabled: what it draws itself is below them.
/// GUI thread.
class DisabledCover : public QGraphicsObject
{
    Q_OBJECT

public:
    explicit DisabledCover(QGraphicsItem *parent);

    /// Of the instance, in pixels.
    void setSize(const QSize &size);

    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

private:
    QSize m_size;
};

} // namespace Widgets
