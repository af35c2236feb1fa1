#pragma once

#include <QImage>

class QByteArray;
class QSize;

namespace Nodes {
class ResourcePtr;
}

namespace Widgets {

/// Makes pictures of the bytes of project files. Nothing here is kept. Any thread.
class PictureDecoder
{
public:
    /// Pixels a picture may have; more is refused, whatever a file claims.
    static constexpr qint64 MaximumPixels = 40'000'000;

    /// Bytes of the resource, not copied: the resource has to outlive them.
    static QByteArray bytes(const Nodes::ResourcePtr &resource);
    static bool isVector(const QByteArray &data);
    /// Format guessed from the data. A null image for what is damaged, unknown or too large.
    static QImage decode(const QByteArray &data);
    /// A vector picture drawn to cover at least that size in its own proportions.
    static QImage drawVector(const QByteArray &data, const QSize &covered);
    /// False for what decode would refuse by its size or format, told without decoding.
    static bool isUsable(const QByteArray &data);
};

} // namespace Widgets
