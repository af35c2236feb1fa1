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
    /// Whether the outline runs around the element, or inside of its edges.
    void setOutside(bool on);
    void setShade(bool on);
    /// The outline is painted over by another one: it is left out, dashes being what takes longest
    /// to paint in a scene of thousands of elements.
    void setCovered(bool on);
    bool isCovered() const { return m_isCovered; }
    bool hasOutline() const { return m_hasOutline; }
    bool hasShade() const { return m_hasShade; }

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

private:
    bool m_hasShade = false;
    bool m_hasOutline = false;
    bool m_isOutside = true;
    bool m_isCovered = false;
};

} // namespace Widgets
