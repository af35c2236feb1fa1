#include "editor/tree/KindIconEngine.h"

#include <QPainter>

namespace Editor {

void KindIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode,
                           QIcon::State state)
{
    if (mode == QIcon::Selected) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(Qt::white);
        const qreal corner = rect.width() / 8.0;
        painter->drawRoundedRect(rect, corner, corner);
        painter->restore();
        mode = QIcon::Normal; // tinted it would not be seen
    }
    m_icon.paint(painter, rect, Qt::AlignCenter, mode, state);
}

QPixmap KindIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
}

} // namespace Editor
