#include "widgets/elements/pictures/PictureIcon.h"

#include "widgets/elements/pictures/ImageCachingManager.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

namespace Widgets {

PictureIcon::PictureIcon(const Nodes::ResourcePtr &resource, bool isFitted)
    : m_resource(resource), m_isFitted(isFitted)
{
}

QSize PictureIcon::actualSize(const QSize &size, QIcon::Mode, QIcon::State)
{
    const QImage *own = ImageCachingManager::getInstance().getImage(m_resource);
    if (!own || own->isNull())
        return {};
    const bool isSmall = own->width() <= size.width() && own->height() <= size.height();
    return isSmall && !m_isFitted ? own->size() : own->size().scaled(size, Qt::KeepAspectRatio);
}

QPixmap PictureIcon::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    const QSize shown = actualSize(size, mode, state);
    const QPixmap picture =
        QPixmap::fromImage(ImageCachingManager::getInstance().getRendition(m_resource, shown));
    if (mode == QIcon::Normal || picture.isNull())
        return picture;
    QStyleOption option;
    option.palette = QApplication::palette();
    return QApplication::style()->generatedIconPixmap(mode, picture, &option);
}

void PictureIcon::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state)
{
    QRect place(QPoint(), actualSize(rect.size(), mode, state));
    place.moveCenter(rect.center());
    painter->drawPixmap(place, pixmap(rect.size(), mode, state));
}

} // namespace Widgets
