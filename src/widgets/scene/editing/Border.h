#pragma once

#include "widgets/scene/editing/GraphicsItem.h"

namespace Widgets {

/// Dashed outline, or shade, around a scene or an element in the editor.
class WIDGETS_EXPORT Border : public GraphicsItem
{
    Q_OBJECT

public:
    explicit Border(QGraphicsItem *parent = nullptr);

    void setOutline(bool on);
    void setShade(bool on);
    bool hasOutline() const { return m_hasOutline; }
    bool hasShade() const { return m_hasShade; }

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

private:
    bool m_hasShade = false;
    bool m_hasOutline = false;
};

} // namespace Widgets
