#include "widgets/scene/editing/GrabberPlane.h"

#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/CornerGrabber.h"
#include "widgets/scene/editing/EditedScene.h"
#include "widgets/scene/editing/SceneSelection.h"
#include "widgets/scene/editing/groups/SceneGroups.h"

#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionGraphicsItem>

#include <limits>

namespace Widgets {

namespace {

constexpr double farthest = 1 << 17; // elements stand within 16 bits

CornerGrabber *grabberOf(const ProxyWidget *host, int corner)
{
    const QList<QGraphicsItem *> items = host ? host->childItems() : QList<QGraphicsItem *>();
    for (QGraphicsItem *item : items) {
        auto *grabber = qgraphicsitem_cast<CornerGrabber *>(item);
        if (grabber && grabber->corner() == corner)
            return grabber;
    }
    return nullptr;
}

} // namespace

GrabberPlane::GrabberPlane(QGraphicsScene &scene, EditedScene *edited,
                           const SceneSelection &selection, const SceneGroups &groups)
    : m_edited(edited), m_selection(selection), m_groups(groups), m_own(*this)
{
    setZValue(double(std::numeric_limits<int>::max()) * 4);
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptHoverEvents(true);
    setFlag(ItemUsesExtendedStyleOption);
    scene.addItem(this);
}

GrabberPlane::~GrabberPlane() = default;

void GrabberPlane::refresh()
{
    const bool isOneGroup = m_groups.isOneGroup();
    m_own.setShown(isOneGroup);
    if (!isOneGroup)
        return;
    m_own.place(m_selection.rect().adjusted(-SceneGroups::margin, -SceneGroups::margin,
                                            SceneGroups::margin, SceneGroups::margin));
}

QRectF GrabberPlane::boundingRect() const
{
    return {-farthest, -farthest, 2 * farthest, 2 * farthest};
}

CornerGrabber *GrabberPlane::grabberIn(const QRectF &area, ProxyWidget **host) const
{
    for (ProxyWidget *candidate : m_selection.grabbed()) {
        const QList<QGraphicsItem *> items = candidate->childItems();
        for (QGraphicsItem *item : items) {
            auto *grabber = qgraphicsitem_cast<CornerGrabber *>(item);
            const bool isNear = grabber && grabber->sceneBoundingRect().intersects(area);
            if (!isNear || !grabber->shape().intersects(grabber->mapRectFromScene(area)))
                continue;
            if (host)
                *host = candidate;
            return grabber;
        }
    }
    return nullptr;
}

CornerGrabber *GrabberPlane::grabberAt(QPointF place, ProxyWidget **host) const
{
    constexpr double point = 0.01;
    return grabberIn({place - QPointF(point, point) / 2, QSizeF(point, point)}, host);
}

bool GrabberPlane::hasGrabber(QPointF place) const
{
    return grabberAt(place) || m_own.has(place);
}

QPainterPath GrabberPlane::shape() const
{
    QPainterPath shape;
    for (const ProxyWidget *host : m_selection.grabbed()) {
        for (int corner = 0; corner < CornerCount; ++corner) {
            if (const CornerGrabber *grabber = grabberOf(host, corner))
                shape.addPath(grabber->mapToScene(grabber->shape()));
        }
    }
    return shape;
}

bool GrabberPlane::contains(const QPointF &point) const
{
    return grabberAt(point);
}

// Asked for at each motion of the mouse: the shape would be made each time.
bool GrabberPlane::collidesWithPath(const QPainterPath &path, Qt::ItemSelectionMode) const
{
    return grabberIn(path.boundingRect());
}

void GrabberPlane::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    for (const ProxyWidget *host : m_selection.grabbed()) {
        const QList<QGraphicsItem *> items = host->childItems();
        for (QGraphicsItem *item : items) {
            auto *grabber = qgraphicsitem_cast<CornerGrabber *>(item);
            if (!grabber || !grabber->sceneBoundingRect()
                                 .adjusted(-1, -1, 1, 1)
                                 .intersects(option->exposedRect))
                continue;
            painter->fillRect(grabber->sceneBoundingRect(), Qt::white);
            painter->save();
            painter->setTransform(grabber->sceneTransform(), true);
            grabber->paint(painter, option, widget);
            painter->restore();
        }
    }
    for (const CornerGrabber *grabber : m_own.grabbers()) // these paint themselves, as its children
        painter->fillRect(grabber->sceneBoundingRect(), Qt::white);
}

// An element hears of it by its own grabber, as if nothing lay above that.
bool GrabberPlane::sceneEvent(QEvent *event)
{
    const auto *mouse = dynamic_cast<QGraphicsSceneMouseEvent *>(event);
    switch (event->type()) {
    case QEvent::GraphicsSceneHoverEnter:
    case QEvent::GraphicsSceneHoverMove: {
        const QPointF place = static_cast<QGraphicsSceneHoverEvent *>(event)->scenePos();
        hover(&place);
        return true;
    }
    case QEvent::GraphicsSceneHoverLeave:
        hover(nullptr);
        return true;
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseDoubleClick: {
        ProxyWidget *host = nullptr;
        const CornerGrabber *grabber = grabberAt(mouse->scenePos(), &host);
        m_host = host;
        m_corner = grabber ? int(grabber->corner()) : -1;
        event->setAccepted(grabber);
        break;
    }
    case QEvent::GraphicsSceneMouseMove:
    case QEvent::GraphicsSceneMouseRelease:
    case QEvent::UngrabMouse:
        break;
    default:
        return QGraphicsItem::sceneEvent(event);
    }
    CornerGrabber *held = grabberOf(m_host, m_corner);
    return held && scene()->sendEvent(held, event);
}

void GrabberPlane::hover(const QPointF *place)
{
    ProxyWidget *host = nullptr;
    CornerGrabber *below = place ? grabberAt(*place, &host) : nullptr;
    CornerGrabber *before = grabberOf(m_host, m_corner);
    if (below == before)
        return;
    if (before) {
        QGraphicsSceneHoverEvent leave(QEvent::GraphicsSceneHoverLeave);
        scene()->sendEvent(before, &leave);
    }
    m_host = host;
    m_corner = below ? int(below->corner()) : -1;
    if (!below) {
        unsetCursor();
        return;
    }
    QGraphicsSceneHoverEvent enter(QEvent::GraphicsSceneHoverEnter);
    scene()->sendEvent(below, &enter);
    setCursor(below->cursor());
}

// Of the group's own grabbers.
bool GrabberPlane::sceneEventFilter(QGraphicsItem *watched, QEvent *event)
{
    auto *grabber = qgraphicsitem_cast<CornerGrabber *>(watched);
    if (!grabber || !m_edited)
        return false;
    if (event->type() == QEvent::UngrabMouse)
        m_edited->cancelDrag();
    const auto *mouse = dynamic_cast<QGraphicsSceneMouseEvent *>(event);
    if (!mouse)
        return false;
    if (event->type() == QEvent::GraphicsSceneMouseMove)
        m_edited->drag({nullptr, grabber->corner(), mouse->buttonDownScenePos(Qt::LeftButton),
                        mouse->scenePos()});
    else if (event->type() == QEvent::GraphicsSceneMouseRelease)
        m_edited->onMoveFinished();
    event->accept();
    return true;
}

} // namespace Widgets
