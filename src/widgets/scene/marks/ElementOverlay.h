#pragma once

#include "widgets/WidgetsExport.h"

#include <QGraphicsObject>
#include <QPointer>

namespace Widgets {

class ProxyWidget;

/// Something drawn around one element, above all elements of the scene: follows its place, is seen
/// when it is, goes with it, and takes no input. GUI thread.
class WIDGETS_EXPORT ElementOverlay : public QGraphicsObject
{
    Q_OBJECT

public:
    /// Above elements, in their order among each other.
    enum Level { MarkLevel = 1, AlarmLevel = 2 };

    ProxyWidget *element() const { return m_element; }
    QRectF boundingRect() const override { return m_outline; }
    /// Nothing of it can be hit.
    QPainterPath shape() const override;

protected:
    /// Becomes an item of the element's scene and reaches `margin` beyond the element.
    ElementOverlay(ProxyWidget &element, Level level, qreal margin);

    /// Of the element, in this item's coordinates.
    const QRectF &place() const { return m_place; }
    /// A rectangle of the place and beyond it, moved to where the scene is seen.
    QRectF inScene(QRectF rect) const;

private:
    void follow();
    void takeVisible();

    QPointer<ProxyWidget> m_element;
    qreal m_margin;
    QRectF m_place;
    QRectF m_outline;
};

} // namespace Widgets
