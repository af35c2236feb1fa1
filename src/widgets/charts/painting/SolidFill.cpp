#include "widgets/charts/painting/SolidFill.h"

#include <QPaintEngine>
#include <QPainter>

#include <algorithm>
#include <cstddef>

namespace Widgets {

namespace {

// A clipping of more pieces than this is left to the painter.
constexpr int maxClipRects = 8;

/// The image behind a painter of the raster engine; null when its pixels cannot be set as they are.
QImage *imageOf(const QPainter &painter, const QColor &color)
{
    const QPaintEngine *engine = painter.paintEngine();
    if (!engine || engine->type() != QPaintEngine::Raster || color.alpha() != 255 ||
        painter.opacity() < 1 || painter.compositionMode() != QPainter::CompositionMode_SourceOver)
        return nullptr;
    QPaintDevice *device = engine->paintDevice();
    if (!device || device->devType() != QInternal::Image)
        return nullptr;
    auto *image = static_cast<QImage *>(device);
    const QImage::Format format = image->format();
    const bool isFit = format == QImage::Format_RGB32 || format == QImage::Format_ARGB32 ||
                       format == QImage::Format_ARGB32_Premultiplied;
    return isFit ? image : nullptr;
}

/// In pixels of the device, to which the painter's transformation has been set.
QRegion clipOf(const QPainter &painter, const QRect &image)
{
    QRegion clip(image);
    const QRegion system = painter.paintEngine()->systemClip();
    if (!system.isEmpty())
        clip &= system;
    if (painter.hasClipping())
        clip &= painter.clipRegion();
    return clip;
}

/// The pixels of an image, to be set inside a part of it.
class Pixels
{
public:
    Pixels(QImage &image, const QRect &part)
        // The engine has made the pixels its own when it began; bits() could detach them from it.
        : m_first(reinterpret_cast<QRgb *>(const_cast<uchar *>(image.constBits()))),
          m_stride(image.bytesPerLine() / int(sizeof(QRgb))),
          m_left(part.left()),
          m_right(part.right()),
          m_top(part.top()),
          m_bottom(part.bottom())
    {
    }

    void fill(const QRect &rect, QRgb color) const
    {
        const int left = std::max(rect.left(), m_left);
        const int width = std::min(rect.right(), m_right) - left + 1;
        const int top = std::max(rect.top(), m_top);
        const int bottom = std::min(rect.bottom(), m_bottom);
        if (width <= 0 || top > bottom)
            return;
        QRgb *row = m_first + top * m_stride + left;
        QRgb *const end = row + (bottom - top + 1) * m_stride;
        if (width == 1) {
            if (left % pixelsPerLine == 0)
                fetchNext(row, end);
            for (; row != end; row += m_stride)
                *row = color;
        } else {
            for (; row != end; row += m_stride)
                std::fill_n(row, width, color);
        }
    }

private:
    static constexpr int pixelsPerLine = 16; // of the cache: 64 bytes

    /// The next columns most likely lie in the same rows, and each row is far from the one before.
    void fetchNext(const QRgb *row, const QRgb *end) const
    {
        for (; row != end; row += m_stride)
            __builtin_prefetch(row + pixelsPerLine, 1);
    }

    QRgb *m_first;
    std::ptrdiff_t m_stride; // in pixels
    int m_left;
    int m_right;
    int m_top;
    int m_bottom;
};

} // namespace

void fillSolid(QPainter &painter, const QVector<QRect> &rects, const QColor &color)
{
    painter.save();
    painter.setWorldTransform(painter.deviceTransform().inverted() * painter.worldTransform());
    QImage *image = imageOf(painter, color);
    const QRegion clip = image ? clipOf(painter, image->rect()) : QRegion();
    if (image && clip.rectCount() <= maxClipRects) {
        const QRgb pixel = color.rgb(); // not for free with a colour that is not kept as RGB
        for (const QRect &part : clip) {
            const Pixels pixels(*image, part);
            for (const QRect &rect : rects)
                pixels.fill(rect, pixel);
        }
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawRects(rects);
    }
    painter.restore();
}

} // namespace Widgets
