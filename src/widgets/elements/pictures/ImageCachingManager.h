#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/ResourcePtr.h"

#include <QCache>
#include <QImage>

#include <memory>
#include <unordered_map>

class QPainter;

/// Decoded still pictures of the process, shared by all who show them: each file is decoded once.
/// GUI thread.
class WIDGETS_EXPORT ImageCachingManager
{
public:
    /// What the cache holds, in bytes of pixels.
    struct Memory
    {
        qint64 images;     ///< decoded, kept until the process ends
        qint64 renditions; ///< scaled, turned; the oldest give way beyond RenditionLimit
    };
    static constexpr int RenditionLimit = 96 << 20;
    /// Pixels that one rendition may have: more than a display shows, whatever a node asks for.
    static constexpr qint64 MaximumRendition = 16'000'000;

    static ImageCachingManager &getInstance();
    ImageCachingManager(const ImageCachingManager &) = delete;
    ImageCachingManager &operator=(const ImageCachingManager &) = delete;

    /// The picture in its own size; owned by the cache, valid while the process runs. A null image
    /// when the data is damaged, of an unknown format or beyond 40 million pixels; a null pointer
    /// only for a resource without data.
    QImage *getImage(const Nodes::ResourcePtr &resource);
    /// The picture turned clockwise by whole degrees, then stretched to `size` pixels: the same for
    /// all who ask for the same. Vector pictures are drawn for that size, so they stay sharp. A
    /// null image when there is no picture or the size is empty.
    QImage getRendition(const Nodes::ResourcePtr &resource, const QSize &size, int angle = 0);
    /// Draws the picture, turned, into the rectangle, rendered for the pixels that the painter
    /// really covers: sharp at any ratio of the display and scale of the view. One larger than any
    /// display is rendered coarser.
    void draw(QPainter &painter, const QRect &target, const Nodes::ResourcePtr &resource,
              int angle = 0);

    int getCount() const { return int(m_images.size()); }
    Memory getMemory() const { return {m_bytes, m_renditions.totalCost()}; }

private:
    struct Entry
    {
        Nodes::ResourcePtr resource; // keeps the bytes, and so the key, from being reused
        std::unique_ptr<QImage> image;
    };

    ImageCachingManager();
    ~ImageCachingManager();

    std::unordered_map<const char *, Entry> m_images;
    qint64 m_bytes = 0;
    QCache<QString, QImage> m_renditions;
};
