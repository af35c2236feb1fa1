#include "editor/properties/values/ColorSwatch.h"

#include "nodes/values/NColor.h"

#include <QPainter>

namespace Editor {

QPixmap colorSwatch(const QString &text, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::white);
    QPainter painter(&pixmap);
    const auto color = Nodes::NColor::FromHex(text.toStdString());
    if (!color || color->alpha < 255) {
        const int half = size / 2;
        painter.fillRect(0, 0, half, half, Qt::lightGray);
        painter.fillRect(half, half, size - half, size - half, Qt::lightGray);
    }
    if (color)
        painter.fillRect(pixmap.rect(),
                         QColor(color->red, color->green, color->blue, color->alpha));
    painter.setPen(QColor(0x5d, 0x66, 0x6e));
    painter.drawRect(0, 0, size - 1, size - 1);
    return pixmap;
}

} // namespace Editor
