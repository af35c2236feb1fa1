#include "widgets/scene/editing/GrabberFrame.h"

#include "widgets/scene/editing/CornerGrabber.h"

#include <QGraphicsScene>
#include <QGraphicsView>

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

// In a picture that is shown small they keep their size on the screen. An element that was taken
// out of its scene hears of its node until it is deleted.
double scaleOf(const QGraphicsItem &owner)
{
    constexpr double least = 0.125;
    const QGraphicsScene *scene = owner.scene();
    const QList<QGraphicsView *> views = scene ? scene->views() : QList<QGraphicsView *>();
    const double shown = views.isEmpty() ? 1 : std::abs(views.first()->transform().m11());
    return 1 / qBound(least, shown, 1.0);
}

} // namespace

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
    const double left = outline.left() - shift.x() - 1;
    const double top = outline.top() - shift.y() - 1;
    const double right = outline.right() - shift.x() + 1;
    const double bottom = outline.bottom() - shift.y() + 1;
    const QPointF places[CornerCount] = {
        {left, top},
        {right - 1, top},
        {right - 1, bottom - 1},
        {left, bottom - 1},
        {(left + right) / 2, top},
        {right - 1, (top + bottom) / 2},
        {(left + right) / 2, bottom - 1},
        {left, (top + bottom) / 2},
    };
    const double scale = scaleOf(m_owner);
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
