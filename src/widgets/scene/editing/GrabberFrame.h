#pragma once

#include <QList>
#include <QRectF>

class QGraphicsProxyWidget;

namespace Widgets {

class CornerGrabber;

/// The eight grabbers of a selected element: child items of its host, which filters their events.
/// GUI thread.
class GrabberFrame
{
public:
    explicit GrabberFrame(QGraphicsProxyWidget &host);
    GrabberFrame(const GrabberFrame &) = delete;
    GrabberFrame &operator=(const GrabberFrame &) = delete;
    ~GrabberFrame();

    /// Not before the host is in a scene.
    void setShown(bool on);
    /// Centres them on the outline of the rectangle (scene pixels), one pixel outside of it; an
    /// empty one means the host's present geometry. Does nothing while they are not shown.
    void place(const QRectF &rect);

private:
    QGraphicsProxyWidget &m_host;
    QList<CornerGrabber *> m_grabbers;
};

} // namespace Widgets
