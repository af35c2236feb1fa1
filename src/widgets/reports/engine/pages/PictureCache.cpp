#include "widgets/reports/engine/pages/PictureCache.h"

#include <QBuffer>
#include <QImageReader>

namespace LimeReport {

namespace {

constexpr int KeptKilobytes = 64 << 10;
// A sheet A3 at 600 dpi; a picture that claims more would take the station's memory.
constexpr qint64 MostPixels = 70'000'000;

} // namespace

PictureCache::PictureCache() : m_images(KeptKilobytes) {}

QImage PictureCache::picture(const QByteArray &bytes, QString &error)
{
    if (bytes.isEmpty()) {
        error = QStringLiteral("рисунка нет");
        return QImage();
    }
    if (const QImage *kept = m_images.object(bytes))
        return *kept;
    QByteArray input = bytes;
    QBuffer buffer(&input);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (qint64(size.width()) * size.height() > MostPixels) {
        error = QStringLiteral("рисунок %1 x %2 точек слишком велик")
                    .arg(size.width())
                    .arg(size.height());
        return QImage();
    }
    const QImage image = reader.read();
    if (image.isNull())
        error = QStringLiteral("рисунок не читается");
    else
        m_images.insert(bytes, new QImage(image), int(qMax<qint64>(1, image.sizeInBytes() >> 10)));
    return image;
}

} // namespace LimeReport
