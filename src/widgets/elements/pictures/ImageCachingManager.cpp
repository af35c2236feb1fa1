#include "widgets/elements/pictures/ImageCachingManager.h"

#include "widgets/elements/pictures/PictureDecoder.h"

#include <QPainter>

#include <cmath>

using Widgets::PictureDecoder;

namespace {

QImage sharp(const Nodes::ResourcePtr &resource, const QSize &size, int angle)
{
    const QByteArray data = PictureDecoder::bytes(resource);
    if (!PictureDecoder::isVector(data))
        return {};
    const int side = qMax(size.width(), size.height());
    return PictureDecoder::drawVector(data, angle == 0 ? size : QSize(side, side));
}

QImage render(const Nodes::ResourcePtr &resource, const QImage &original, const QSize &size,
              int angle)
{
    QImage picture = sharp(resource, size, angle);
    if (picture.isNull())
        picture = original;
    if (angle != 0)
        picture = picture.transformed(QTransform().rotate(angle), Qt::SmoothTransformation);
    return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QSize affordable(const QSize &size)
{
    const double pixels = double(size.width()) * size.height();
    const double scale = std::sqrt(ImageCachingManager::MaximumRendition / pixels);
    return {qMax(1, int(size.width() * scale)), qMax(1, int(size.height() * scale))};
}

} // namespace

ImageCachingManager::ImageCachingManager() : m_renditions(RenditionLimit) {}

ImageCachingManager::~ImageCachingManager() = default;

ImageCachingManager &ImageCachingManager::getInstance()
{
    static ImageCachingManager instance;
    return instance;
}

QImage *ImageCachingManager::getImage(const Nodes::ResourcePtr &resource)
{
    if (!resource)
        return nullptr;
    Entry &entry = m_images[resource.GetData()];
    if (!entry.image) {
        entry.resource = resource;
        entry.image =
            std::make_unique<QImage>(PictureDecoder::decode(PictureDecoder::bytes(resource)));
        m_bytes += entry.image->sizeInBytes();
    }
    return entry.image.get();
}

QImage ImageCachingManager::getRendition(const Nodes::ResourcePtr &resource, const QSize &size,
                                         int angle)
{
    const QImage *original = getImage(resource);
    if (!original || original->isNull() || size.isEmpty())
        return {};
    angle %= 360;
    if (size == original->size() && angle == 0)
        return *original;
    if (qint64(size.width()) * size.height() > MaximumRendition)
        return getRendition(resource, affordable(size), angle);
    const QString key = QStringLiteral("%1 %2 %3 %4")
                            .arg(quintptr(resource.GetData()))
                            .arg(size.width())
                            .arg(size.height())
                            .arg(angle);
    if (const QImage *kept = m_renditions.object(key))
        return *kept;
    const QImage made = render(resource, *original, size, angle);
    m_renditions.insert(key, new QImage(made), int(made.sizeInBytes()));
    return made;
}

void ImageCachingManager::draw(QPainter &painter, const QRect &target,
                               const Nodes::ResourcePtr &resource, int angle)
{
    const QTransform &device = painter.deviceTransform();
    const QSizeF covered(target.width() * std::hypot(device.m11(), device.m12()),
                         target.height() * std::hypot(device.m21(), device.m22()));
    const QImage rendition = getRendition(resource, covered.toSize(), angle);
    if (rendition.size() != target.size())
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, rendition);
}
