#pragma once

#include "widgets/scene/editing/GraphicsItem.h"

namespace Widgets {

/// Covers an element over which nodes are dragged: green where it takes them, else red.
class WIDGETS_EXPORT DragAndDropItem : public GraphicsItem
{
    Q_OBJECT

public:
    explicit DragAndDropItem(QGraphicsItem *parent = nullptr);

    bool isAcceptable() const { return m_isAcceptable; }
    void setAcceptable(bool on);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

private:
    bool m_isAcceptable = false;
};

} // namespace Widgets
