#pragma once

#include "nodes/model/links/ResourcePtr.h"

#include <QIconEngine>

namespace Widgets {

/// Picture of a button, rendered for the pixels of the display that it is shown with. GUI thread.
class PictureIcon : public QIconEngine
{
public:
    /// Without `isFitted` the picture keeps its own size and is only made smaller.
    PictureIcon(const Nodes::ResourcePtr &resource, bool isFitted);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine *clone() const override { return new PictureIcon(*this); }

private:
    Nodes::ResourcePtr m_resource;
    bool m_isFitted;
};

} // namespace Widgets
