#pragma once

#include <QList>
#include <QRectF>

class QGraphicsItem;
class QPointF;

namespace Widgets {

class CornerGrabber;

/// The eight grabbers of a selected element, or of a group: child items of their owner, which
/// filters their events. GUI thread.
class GrabberFrame
{
public:
    explicit GrabberFrame(QGraphicsItem &owner);
    GrabberFrame(const GrabberFrame &) = delete;
    GrabberFrame &operator=(const GrabberFrame &) = delete;
    ~GrabberFrame();

    /// Not before the owner is in a scene. They are to be placed then.
    void setShown(bool on);
    /// Centres them on the outline of the rectangle (scene pixels), one pixel outside of it. Does
    /// nothing while they are not shown.
    void place(const QRectF &outline);
    /// None while they are not shown.
    const QList<CornerGrabber *> &grabbers() const { return m_grabbers; }
    /// Whether one of them is there, scene pixels.
    bool has(const QPointF &place) const;

private:
    QGraphicsItem &m_owner;
    QList<CornerGrabber *> m_grabbers;
};

} // namespace Widgets
