#include "widgets/scene/editing/GrabberFrame.h"

#include "widgets/scene/editing/CornerGrabber.h"
#include "widgets/scene/editing/ScreenPixel.h"

#include <algorithm>

namespace Widgets {

GrabberFrame::GrabberFrame(QGraphicsItem &owner) : m_owner(owner) {}

GrabberFrame::~GrabberFrame()
{
    qDeleteAll(m_grabbers);
}

void GrabberFrame::setShown(bool on)
{
    if (on == !m_grabbers.isEmpty() || !m_owner.scene())
        return;
    if (!on) {
        qDeleteAll(m_grabbers);
        m_grabbers.clear();
        return;
    }
    for (int corner = 0; corner < CornerCount; ++corner) {
        auto *grabber = new CornerGrabber(&m_owner, Corner(corner));
        grabber->installSceneEventFilter(&m_owner);
        m_grabbers.append(grabber);
    }
}

void GrabberFrame::place(const QRectF &outline)
{
    if (m_grabbers.size() != CornerCount)
        return;
    constexpr double half = CornerGrabber::side / 2;
    const QPointF shift = m_owner.scenePos() + QPointF(half, half);
    const double scale = screenPixel(m_owner); // they keep their size on the screen
    const double gap = qMin(scale, 1.0);       // a pixel of the screen where pixels are shown large
    const double left = outline.left() - shift.x() - gap;
    const double top = outline.top() - shift.y() - gap;
    const double right = outline.right() - shift.x() + gap;
    const double bottom = outline.bottom() - shift.y() + gap;
    const QPointF places[CornerCount] = {
        {left, top},
        {right - gap, top},
        {right - gap, bottom - gap},
        {left, bottom - gap},
        {(left + right) / 2, top},
        {right - gap, (top + bottom) / 2},
        {(left + right) / 2, bottom - gap},
        {left, (top + bottom) / 2},
    };
    for (CornerGrabber *grabber : qAsConst(m_grabbers)) {
        grabber->setPos(places[grabber->corner()]);
        grabber->setScale(scale);
    }
}

bool GrabberFrame::has(const QPointF &place) const
{
    return std::any_of(m_grabbers.begin(), m_grabbers.end(), [&place](const CornerGrabber *known) {
        return known->sceneBoundingRect().contains(place);
    });
}

} // namespace Widgets
