#pragma once

#include "widgets/WidgetsExport.h"

#include <QGraphicsItem>
#include <QObject>

namespace Widgets {

/// Base of the editor's decorations: an item with a size of its own that takes no mouse button.
class WIDGETS_EXPORT GraphicsItem : public QObject, public QGraphicsItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)

public:
    explicit GraphicsItem(QGraphicsItem *parent = nullptr);

    double width() const { return m_width; }
    double height() const { return m_height; }
    void setSize(double width, double height);

    /// The size with a margin of one pixel, which outlines are drawn in.
    QRectF boundingRect() const override;

private:
    double m_width = 0;
    double m_height = 0;
};

} // namespace Widgets
