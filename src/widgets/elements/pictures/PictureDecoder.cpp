#include "widgets/elements/pictures/PictureDecoder.h"

#include "nodes/model/links/ResourcePtr.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <QtMath>

namespace Widgets {

namespace {

qint64 pixels(const QSize &size)
{
    return qint64(size.width()) * size.height();
}

QImage draw(QSvgRenderer &renderer, const QSize &size)
{
    if (size.isEmpty() || pixels(size) > PictureDecoder::MaximumPixels)
        return {};
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

} // namespace

QByteArray PictureDecoder::bytes(const Nodes::ResourcePtr &resource)
{
    return QByteArray::fromRawData(resource.GetData(), int(resource.GetSize()));
}

bool PictureDecoder::isVector(const QByteArray &data)
{
    // Also compressed SVG; text may start with a declaration and comments.
    return data.startsWith("\x1f\x8b") || data.left(4096).contains("<svg");
}

bool PictureDecoder::isUsable(const QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    return reader.canRead() && reader.size().isValid() && pixels(reader.size()) <= MaximumPixels;
}

QImage PictureDecoder::decode(const QByteArray &data)
{
    if (isVector(data)) {
        QSvgRenderer renderer(data);
        return draw(renderer, renderer.defaultSize());
    }
    if (!isUsable(data))
        return {};
    const QImage image = QImage::fromData(data);
    return image.isNull() ? image : image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QImage PictureDecoder::drawVector(const QByteArray &data, const QSize &covered)
{
    QSvgRenderer renderer(data);
    const QSize own = renderer.defaultSize();
    return draw(renderer, own.scaled(covered, Qt::KeepAspectRatioByExpanding));
}

} // namespace Widgets
